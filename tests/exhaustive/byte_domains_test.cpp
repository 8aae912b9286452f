// The questions whose answer hangs on one or two bytes, asked with every value.
#include <gtest/gtest.h>

#include <set>

#include "protocol/job_status.h"
#include "protocol/printer_levels.h"
#include "tests/oracle/levels.h"

namespace {

JobStatus job_status(unsigned first, unsigned second)
{
  std::string reply(20, '\xa5');
  reply[8] = static_cast<char>(first);
  reply[9] = static_cast<char>(second);
  return JobStatus::Parse(reply.data());
}

TEST(EveryJobStatus, IsReadyUnlessItsTwoBytesSayOtherwise)
{
  int not_ready = 0;
  for (unsigned first = 0; first < 256; ++first)
    for (unsigned second = 0; second < 256; ++second) {
      bool const expected = first != 0x10 && first != 0x20 && !(first == 0x50 && second <= 0x2f);
      ASSERT_EQ(job_status(first, second).isReady(), expected) << first << " " << second;
      if (!expected) ++not_ready;
    }
  EXPECT_EQ(not_ready, 256 + 256 + 48);
}

TEST(EveryInkSheet, HasANameOfItsOwn)
{
  std::set<std::string> names;
  for (unsigned code = 0; code < 256; ++code) {
    std::string expected;
    append_ink_sheet_name(expected, code);
    std::string const name =
        PrinterLevels::Fill(300, 120, static_cast<unsigned char>(code)).InkSheetTypeName();
    ASSERT_EQ(name, expected) << code;
    names.insert(name);
  }
  EXPECT_EQ(names.size(), 256U);
}

}  // namespace
