#include "admin/ppd_block.h"

#include <gtest/gtest.h>

namespace {

std::string damage(std::string_view ppd)
{
  return find_block(read_ppd_records(ppd).records).damage;
}

// The file without the block that it is known to have.
std::string taken_out(std::string_view ppd)
{
  PpdRecords const file = read_ppd_records(ppd);
  FoundBlock const found = find_block(file.records);
  EXPECT_TRUE(found.block) << found.damage;
  return found.block ? without_block(file.records, *found.block) : "";
}

}  // namespace

TEST(PpdBlock, AFileWithoutFenceHasNone)
{
  FoundBlock const found = find_block(read_ppd_records("*A: 1\n").records);
  EXPECT_FALSE(found.block);
  EXPECT_EQ(found.damage, "");
}

TEST(PpdBlock, ADamagedFenceIsNamedWithItsLine)
{
  EXPECT_EQ(damage("*A: 1\n*% velmoctl begin\n"),
            "line 2: a block of velmoctl begins that has no end");
  EXPECT_EQ(damage("*A: 1\n*% velmoctl end\n"),
            "line 2: a block of velmoctl ends that has no begin");
  EXPECT_EQ(damage("*% velmoctl begin\n*% velmoctl begin\n*% velmoctl end\n"),
            "line 2: a second block of velmoctl begins");
  EXPECT_EQ(damage("*% velmoctl begin\n*% velmoctl end\n*% velmoctl begin\n"),
            "line 3: a second block of velmoctl begins");
  EXPECT_EQ(damage("*% velmoctl begin\n*% velmoctl end\n*% velmoctl end\n"),
            "line 3: a block of velmoctl ends a second time");
  EXPECT_EQ(damage("*A: 1\n*% velmoctl replaced *B: 2\n*% velmoctl replaced *C: 3\n"),
            "line 2: a line replaced by a block of velmoctl that is gone");
}

TEST(PpdBlock, AFenceInsideAValueIsNone)
{
  EXPECT_EQ(damage("*A: \"\n*% velmoctl begin\n\"\n"), "");
}

TEST(PpdBlock, AllButTheBlockStays)
{
  EXPECT_EQ(taken_out("*A: 1\n*% velmoctl begin\n*B: 2\n*% velmoctl end\n*C: 3"), "*A: 1\n*C: 3");
  EXPECT_EQ(taken_out("*% velmoctl begin\r\n*% velmoctl end\r\n"), "");
}

TEST(PpdBlock, ReplacedLinesComeBack)
{
  EXPECT_EQ(taken_out("*% velmoctl replaced *B: \"2\r\n*% velmoctl replaced 3\"\r\n"
                      "*% velmoctl begin\r\n*% velmoctl end\r\n"),
            "*B: \"2\r\n3\"\r\n");
}

TEST(PpdBlock, AMissingLineEndIsMissingAgain)
{
  EXPECT_EQ(taken_out("*A: 1\r\n*% velmoctl begin\r\n*% velmoctl no line end before\r\n"
                      "*% velmoctl end\r\n"),
            "*A: 1");
}

TEST(PpdBlock, AMissingLineEndStaysWhenLinesFollow)
{
  EXPECT_EQ(taken_out("*A: 1\n*% velmoctl begin\n*% velmoctl no line end before\n"
                      "*% velmoctl end\n*C: 3\n"),
            "*A: 1\n*C: 3\n");
}

TEST(PpdBlock, EachLineOfARecordIsMarked)
{
  EXPECT_EQ(marked_as_replaced("*A: \"1\r2\n3\"\n"),
            "*% velmoctl replaced *A: \"1\r*% velmoctl replaced 2\n*% velmoctl replaced 3\"\n");
}
