#include "admin/ppd_records.h"

#include <gtest/gtest.h>

namespace {

PpdRecord only_record(std::string_view ppd)
{
  PpdRecords const file = read_ppd_records(ppd);
  EXPECT_EQ(file.records.size(), 1u);
  return file.records.at(0);
}

std::vector<std::string_view> cut(std::string_view ppd)
{
  std::vector<std::string_view> bytes;
  for (PpdRecord const& record : read_ppd_records(ppd).records) bytes.push_back(record.bytes);
  return bytes;
}

using Cuts = std::vector<std::string_view>;

}  // namespace

TEST(PpdRecords, EveryLineEndEndsALine)
{
  EXPECT_EQ(cut("*A: 1\n*B: 2\r\n*C: 3\r*D: 4"),
            (Cuts{"*A: 1\n", "*B: 2\r\n", "*C: 3\r", "*D: 4"}));
  EXPECT_EQ(cut("\n\r\n\r"), (Cuts{"\n", "\r\n", "\r"}));
  EXPECT_EQ(cut(""), Cuts{});
}

TEST(PpdRecords, AQuotedValueRunsOnToItsQuote)
{
  EXPECT_EQ(cut("*A: \"one\ntwo\"\n*B: 1\n"), (Cuts{"*A: \"one\ntwo\"\n", "*B: 1\n"}));
  EXPECT_EQ(only_record("*A: \"one\r\ntwo\"\n").value, "one\ntwo");
}

TEST(PpdRecords, AQuoteInFrontOfTheColonOpensNothing)
{
  EXPECT_EQ(cut("*A\": 1\n*B: 2\n"), (Cuts{"*A\": 1\n", "*B: 2\n"}));
}

TEST(PpdRecords, AQuoteInACommentOpensNothing)
{
  EXPECT_EQ(cut("*% a: \"b\n*B: 2\n"), (Cuts{"*% a: \"b\n", "*B: 2\n"}));
}

TEST(PpdRecords, LinesAreNumberedFromOne)
{
  PpdRecords const file = read_ppd_records("*A: \"1\n2\"\n\n*B: 3\n");
  ASSERT_EQ(file.records.size(), 3u);
  EXPECT_EQ(file.records[0].line, 1u);
  EXPECT_EQ(file.records[1].line, 3u);
  EXPECT_EQ(file.records[2].line, 4u);
}

TEST(PpdRecords, AnOpenQuoteIsNamedByTheLineThatOpensIt)
{
  EXPECT_EQ(read_ppd_records("*A: 1\n*B: \"2\n3\n").open_quote, 2u);
  EXPECT_EQ(read_ppd_records("*A: 1\n*B: \"2\"\n").open_quote, 0u);
}

TEST(PpdRecords, AValueHasItsKeywordOptionAndText)
{
  PpdRecord const record = only_record("*cupsIPPReason com.x/Some text: \"http://h\"\n");
  EXPECT_EQ(record.keyword, "cupsIPPReason");
  EXPECT_EQ(record.option, "com.x");
  EXPECT_EQ(record.text, "Some text");
  EXPECT_EQ(record.value, "http://h");
  EXPECT_TRUE(record.has_value);
}

TEST(PpdRecords, BlanksAroundAnOptionDoNotCount)
{
  PpdRecord const record = only_record("*A \t b \t/c d: \"e\"\n");
  EXPECT_EQ(record.option, "b");
  EXPECT_EQ(record.text, "c d");
  EXPECT_EQ(record.value, "e");
  EXPECT_EQ(only_record("*A b \t: c\n").value, "c");
}

TEST(PpdRecords, BlanksAroundAValueDoNotCount)
{
  EXPECT_EQ(only_record("*A \t:  b c \t\n").value, "b c");
  EXPECT_EQ(only_record("*A:\n").value, "");
  EXPECT_EQ(only_record("*A:\"").value, "");
}

TEST(PpdRecords, AValueThatEndsInAQuoteLosesItsFirstCharacter)
{
  EXPECT_EQ(only_record("*A: bcd\"e\"\n").value, "cd\"e");
}

TEST(PpdRecords, ALineWithoutColonHasNoValue)
{
  EXPECT_FALSE(only_record("*A b/c\n").has_value);
  EXPECT_FALSE(only_record("*A\n").has_value);
}

TEST(PpdRecords, OtherLinesHaveNoKeyword)
{
  for (char const* line : {"*% A: 1\n", "A: 1\n", "*\n", "\n", "*End\n", "*End: 1\n", " \n"})
    EXPECT_EQ(only_record(line).keyword, "") << line;
}

TEST(PpdRecords, AnEndOfFileOfDosIsPassedOver)
{
  EXPECT_EQ(only_record("*A: \x1a"
                        "b\n")
                .value,
            "b");
}

TEST(PpdRecords, AZeroByteHidesTheRestOfItsRecord)
{
  EXPECT_EQ(only_record(std::string_view("*A: b\0c\n", 8)).value, "b");
}

TEST(PpdRecords, WhatStopsTheReaderIsNamed)
{
  EXPECT_EQ(read_ppd_records("*A: 1\n*%APLWORKSET START\n").last_line_read, 2u);
  EXPECT_EQ(read_ppd_records("*%APLWORKSET START\n*%APLWORKSET START\n").last_line_read, 1u);
  EXPECT_EQ(read_ppd_records("*%APLWORKSET STARTS\n").last_line_read, 0u);
}

TEST(PpdRecords, OnlyAsciiLettersAreTheSameInBothCases)
{
  EXPECT_TRUE(same_keyword("cupsFILTER2", "CUPSfilter2"));
  EXPECT_TRUE(same_keyword("azAZ", "AZaz"));
  EXPECT_FALSE(same_keyword("cupsFilter", "cupsFilter2"));
  EXPECT_FALSE(same_keyword("@", "`"));
  EXPECT_FALSE(same_keyword("[", "{"));
}
