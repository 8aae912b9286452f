// Parsing takes no memory: a reply is turned into values, whose texts are made when asked for.
#include <gtest/gtest.h>

#include <string>

#include "protocol/job_status.h"
#include "protocol/printer_info.h"
#include "tests/harness/counted_allocations.h"

TEST(Allocations, AreNotMadeByParsing)
{
  std::string const reply(192, '\x5a');
  int const before = allocation_count();
  PrinterInfo const info = PrinterInfo::Parse(reply.data());
  PrinterState const state = info.GetPrinterState();
  PrinterLevels const levels = info.GetPrinterLevels();
  JobStatus const job = JobStatus::Parse(reply.data());
  EXPECT_EQ(allocation_count(), before);
  EXPECT_TRUE(info.isAvailable() && levels.isAvailable() && job.isAvailable());
  EXPECT_FALSE(state == PrinterState::Unavailable());
}

// Else the test above could not fail.
TEST(Allocations, AreCounted)
{
  int const before = allocation_count();
  std::string const text = PrinterInfo::Parse(std::string(192, '\x5a').data()).to_string();
  EXPECT_GT(allocation_count(), before);
  EXPECT_FALSE(text.empty());
}
