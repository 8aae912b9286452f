// The query that is repeated once a second until the printer is awake.
#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "protocol/queries.h"
#include "tests/harness/same_text.h"
#include "tests/oracle/status_reply.h"
#include "tests/oracle/told_world.h"

namespace {

using Script = FakeScript;

std::string const AWAKE = StatusReply{}.bytes();
std::string const ASLEEP = StatusReply{.power = 1}.bytes();

// A printer that sleeps at this many queries, and what comes then.
Script sleeping(int replies, Script rest = {})
{
  rest.reads.insert(rest.reads.begin(), static_cast<std::size_t>(replies), {ASLEEP});
  return rest;
}

// Calls, messages and result are as told, with a second's pause after each query but the last.
void expect_as_told(Script const& script, int pauses, bool available)
{
  std::optional<std::string> reply;
  std::string const transcript = told(
      script, [&](Surroundings const& outside) { reply = tell_retried_printer_status(outside); });
  FakeWorld world(script);
  PrinterInfo const info = get_printer_info_retry();
  std::string const happened = world.transcript();
  EXPECT_TEXT(info.to_string(), reply ? read_status(*reply).info_text() : "UNAVAILABLE");
  EXPECT_EQ(info.isWakeUp(), available);
  EXPECT_TEXT(happened, transcript);
  int slept = 0;
  for (std::size_t at = 0; (at = happened.find("> sleep(1)\n", at)) != std::string::npos; ++at)
    ++slept;
  EXPECT_EQ(slept, pauses);
}

TEST(GetPrinterInfoRetry, AnAwakePrinterIsAskedOnceWithoutAPause)
{
  expect_as_told({.reads = {{AWAKE}, {"not read"}}}, 0, true);
}

TEST(GetPrinterInfoRetry, ASleepingPrinterIsAskedOnceASecondUntilItIsAwake)
{
  for (int asleep : {1, 2, 59, 60})
    expect_as_told(sleeping(asleep, {.reads = {{AWAKE}}}), asleep, true);
}

TEST(GetPrinterInfoRetry, ThePrinterIsGivenUpAfter61Attempts)
{
  expect_as_told(sleeping(61, {.reads = {{AWAKE}}}), 60, false);
}

TEST(GetPrinterInfoRetry, EveryCallCountsAnew)
{
  Script const script = sleeping(2, {.reads = {{AWAKE}}});
  std::string const once = told(script, tell_retried_printer_status);
  FakeWorld world;
  for (int call = 0; call < 2; ++call) {
    world.script = script;
    get_printer_info_retry();
    EXPECT_TEXT(world.transcript(), once);
  }
}

TEST(GetPrinterInfoRetry, AnInterruptedPauseIsNotMadeUpFor)
{
  expect_as_told(sleeping(1, {.reads = {{AWAKE}}, .unslept = 1}), 1, true);
}

TEST(GetPrinterInfoRetry, OnlyThePowerStateDecides)
{
  StatusReply const broken = {
      .mech = {0xff, 0xff}, .memory = 0xff, .error = {6, 2, 2}, .total = 0, .remaining = 0};
  expect_as_told({.reads = {{broken.bytes()}}}, 0, true);
}

// Whichever attempt fails, and at whichever call, there is no further one.
TEST(GetPrinterInfoRetry, AFailedAttemptEndsItAtOnce)
{
  for (int before : {0, 1, 2, 30, 60}) {
    auto const nth = static_cast<std::size_t>(before);
    Script writes{.writes = std::deque<std::size_t>(nth, 4)};
    writes.writes.push_back(2);
    expect_as_told(sleeping(before, writes), before, false);

    Script flushes{.flushes = std::deque<int>(nth, 0)};
    flushes.flushes.push_back(-1);
    expect_as_told(sleeping(before, flushes), before, false);

    Script drains{.drains = std::deque<int>(nth, 1), .reads = {{"", -1}}};
    drains.drains.push_back(2);
    expect_as_told(sleeping(before, drains), before, false);
  }
}

}  // namespace
