// The rules of every run, as expectations.
#include "tests/faults/documented_run.h"

namespace {

constexpr char const* BRACKETED[] = {"wr_esc_wakeup", "get_printer_info", "get_printer_info_retry",
                                     "get_job_status"};

// A START, an END, a START and so on, up to an END.
void expect_brackets(FaultedRun const& run, std::string const& function)
{
  bool inside = false;
  for (std::string const& message : run.attempts) {
    if (message == "DEBUG: " + function + "() START\n") {
      EXPECT_FALSE(inside) << function;
      inside = true;
    }
    if (message == "DEBUG: " + function + "() END\n") {
      EXPECT_TRUE(inside) << function;
      inside = false;
    }
  }
  EXPECT_FALSE(inside) << function;
}

}  // namespace

void expect_as_told(FaultedRun const& run, ExpectedRun const& expected)
{
  EXPECT_EQ(run.exit_status, expected.exit_status);
  EXPECT_TEXT(run.messages, expected.messages);
  EXPECT_TEXT(run.device, expected.device);
  EXPECT_EQ(run.signal, 0);
  for (char const* function : BRACKETED) expect_brackets(run, function);
  for (std::string const& message : run.attempts) EXPECT_TRUE(message.ends_with('\n')) << message;
  EXPECT_EQ(run.descriptors_after, run.descriptors_before);
  EXPECT_EQ(run.blocks_left, 0);
}
