// One run of a command of velmoctl in the test's own process, and what it said.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>

#include "tests/admin/fake_scheduler.h"

struct Ended {
  int status;
  std::string said;
  std::string errors;
};

inline Ended run_command(FakeScheduler& fake, std::function<int(Scheduler const&)> const& command)
{
  FakeConnection const connection(fake);
  testing::internal::CaptureStdout();
  testing::internal::CaptureStderr();
  int const status = command(connection.scheduler);
  std::string errors = testing::internal::GetCapturedStderr();
  return {status, testing::internal::GetCapturedStdout(), std::move(errors)};
}

// A run ends well and complains of nothing, or with status 1 and one line.
inline void expect_one_line(Ended const& run)
{
  if (run.status == 0) {
    EXPECT_EQ(run.errors, "");
    return;
  }
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.errors.substr(0, 17), "velmoctl: photo: ");
  EXPECT_EQ(run.errors.find('\n'), run.errors.size() - 1) << run.errors;
}

inline bool has_part(std::string const& text, char const* part)
{
  return text.find(part) != std::string::npos;
}
