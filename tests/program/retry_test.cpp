// How long the filter goes on asking a printer that is not awake.
#include <gtest/gtest.h>

#include <algorithm>

#include "tests/program/woken_run.h"

namespace {

constexpr StatusReply ASLEEP{.power = 0x01};
constexpr StatusReply AWAKE{};

std::string asleep_text(int attempts, std::string const& reply = ASLEEP.bytes())
{
  std::string text;
  for (int count = 1; count <= attempts; ++count)
    text += attempt_text(query_text(reply), read_status(reply).info_text(),
                         (count <= 60 ? "retrying(" : "expired(") + std::to_string(count) + "/60)");
  return text;
}

std::string woken_text(int attempts)
{
  return attempt_text(query_text(AWAKE.bytes()), AWAKE.info_text(),
                      "fulfilled(" + std::to_string(attempts) + "/60)");
}

std::string asleep_events(int attempts) { return repeated(attempts, query_events() + "sleep 1\n"); }

// A directive that gets `asleep` replies of a printer that is not awake, and then `last`.
void expect_retries(int asleep, Reply const& last, std::string const& attempts,
                    std::string const& reasons)
{
  SCOPED_TRACE(asleep);
  std::vector<Reply> replies(static_cast<size_t>(asleep), {{ASLEEP.bytes()}});
  replies.push_back(last);
  expect_woken_run(run_commands("ReportStatus\n", {.replies = replies}),
                   directive_text("ReportStatus", 1) + retry_text(attempts) + reasons,
                   asleep_events(std::min(asleep, 60)) + query_events());
}

TEST(Retry, PrinterThatWakesWithinTheLimitIsReported)
{
  for (int asleep : {1, 2, 59, 60})
    expect_retries(asleep, {{AWAKE.bytes()}}, asleep_text(asleep) + woken_text(asleep),
                   reasons_text());
}

TEST(Retry, TheSixtyFirstReplyOfASleepingPrinterIsTheLastAndIsDiscarded)
{
  expect_retries(61, {{AWAKE.bytes()}}, asleep_text(61) + retry_over_text(),
                 unavailable_reasons_text());
}

TEST(Retry, FailedExchangeAfterSleepingRepliesIsNotRetried)
{
  for (int asleep : {1, 2, 60})
    expect_retries(
        asleep, {silence()},
        asleep_text(asleep) + failed_attempt_text(failed_query_text(failed_read_text(-1))),
        unavailable_reasons_text());
}

TEST(Retry, FloodOfASleepingPrinterEndsItAllTheSame)
{
  std::string const reply = ASLEEP.bytes(512);
  expect_woken_run(run_commands("ReportStatus\n", {.replies = {{{repeated(117, reply)}}}}),
                   directive_text("ReportStatus", 1)
                       + retry_text(asleep_text(61, reply) + retry_over_text())
                       + unavailable_reasons_text(),
                   query_events() + repeated(60, "sleep 1\n" + query_events(0)));
}

TEST(Retry, EachDirectiveStartsANewCountWhateverPowerStateButZeroItMeets)
{
  std::vector<Reply> replies;
  std::string messages;
  int line = 0;
  for (unsigned power : {0x01U, 0x02U, 0x20U, 0x7fU, 0x80U, 0xffU}) {
    std::string const asleep = StatusReply{.power = power}.bytes();
    replies.push_back({{asleep}});
    replies.push_back({{AWAKE.bytes()}});
    messages += directive_text("ReportStatus", ++line)
                + retry_text(asleep_text(1, asleep) + woken_text(1)) + reasons_text();
  }
  expect_woken_run(run_commands(repeated(line, "ReportStatus\n"), {.replies = replies}), messages,
                   repeated(line, asleep_events(1) + query_events()));
}

}  // namespace
