// The query that is repeated once a second until the printer is awake.
#include <gtest/gtest.h>

#include <string>

#include "protocol/queries.h"
#include "tests/oracle/expected_texts.h"
#include "tests/harness/fake_world.h"
#include "tests/oracle/replies.h"

namespace {

std::string const UNAVAILABLE = "UNAVAILABLE";

std::string const RETRY_START = "DEBUG: get_printer_info_retry() START\n";
std::string const RETRY_END = "DEBUG: get_printer_info_retry() END\n";

std::string const AWAKE = StatusReply{}.bytes();
std::string const ASLEEP = StatusReply{.power_state = 1}.bytes();

// What one attempt with a reply writes; `counter` is the counter's text after it.
std::string attempt(std::string const& reply, std::string const& counter)
{
  char const* power = reply == AWAKE ? "0x00" : "0x01";
  return expected_status_query(reply) + "DEBUG: printer_info=[power_state=" + power
         + " mech_state=[0x00,0x00] memory_state=0x00 error_info=[GOOD] "
           "levels=[ink ribbon 350 / 700 ink_sheet_type=0x84]]\n"
           "DEBUG: #retry_status=[wake_up="
         + counter + "]\n";
}

// This many attempts with a sleeping printer, a second's pause after each.
std::string asleep_attempts(int count)
{
  std::string text;
  for (int i = 1; i <= count; i++) {
    text += attempt(ASLEEP, "retrying(" + std::to_string(i) + "/60)") + "> sleep(1)\n";
  }
  return text;
}

void fall_asleep(FakeWorld& world, int replies)
{
  for (int i = 0; i < replies; i++) world.reads.push_back({ASLEEP});
}

TEST(GetPrinterInfoRetry, AnAwakePrinterIsAskedOnceWithoutAPause)
{
  FakeWorld world;
  world.reads = {{AWAKE}, {"not read"}};
  EXPECT_TRUE(get_printer_info_retry().isWakeUp());
  EXPECT_EQ(world.transcript(), RETRY_START + attempt(AWAKE, "fulfilled(0/60)") + RETRY_END);
}

TEST(GetPrinterInfoRetry, ASleepingPrinterIsAskedOnceASecondUntilItIsAwake)
{
  for (int asleep : {1, 2, 59, 60}) {
    FakeWorld world;
    fall_asleep(world, asleep);
    world.reads.push_back({AWAKE});
    EXPECT_TRUE(get_printer_info_retry().isWakeUp());
    EXPECT_EQ(world.transcript(),
              RETRY_START + asleep_attempts(asleep)
                  + attempt(AWAKE, "fulfilled(" + std::to_string(asleep) + "/60)") + RETRY_END);
  }
}

TEST(GetPrinterInfoRetry, ThePrinterIsGivenUpAfter61Attempts)
{
  FakeWorld world;
  fall_asleep(world, 61);
  world.reads.push_back({AWAKE});
  EXPECT_EQ(get_printer_info_retry().to_string(), UNAVAILABLE);
  EXPECT_EQ(world.transcript(), RETRY_START + asleep_attempts(60)
                                    + attempt(ASLEEP, "expired(61/60)") + "DEBUG: #retry over\n"
                                    + RETRY_END);
}

TEST(GetPrinterInfoRetry, EveryCallCountsAnew)
{
  FakeWorld world;
  for (int call = 0; call < 2; call++) {
    fall_asleep(world, 2);
    world.reads.push_back({AWAKE});
    get_printer_info_retry();
    EXPECT_EQ(world.transcript(),
              RETRY_START + asleep_attempts(2) + attempt(AWAKE, "fulfilled(2/60)") + RETRY_END);
  }
}

TEST(GetPrinterInfoRetry, AnInterruptedPauseIsNotMadeUpFor)
{
  FakeWorld world;
  world.unslept = 1;
  fall_asleep(world, 1);
  world.reads.push_back({AWAKE});
  EXPECT_TRUE(get_printer_info_retry().isWakeUp());
  EXPECT_EQ(world.transcript(),
            RETRY_START + asleep_attempts(1) + attempt(AWAKE, "fulfilled(1/60)") + RETRY_END);
}

TEST(GetPrinterInfoRetry, OnlyThePowerStateDecides)
{
  FakeWorld world;
  StatusReply const broken = {.memory_state = 0xff,
                              .mech_state = {0xff, 0xff},
                              .error = {6, 2, 2},
                              .total = 0,
                              .remaining = 0};
  world.reads = {{broken.bytes()}};
  EXPECT_TRUE(get_printer_info_retry().isAvailable());
  EXPECT_NE(world.transcript().find("wake_up=fulfilled(0/60)]"), std::string::npos);
}

// What a failed attempt writes, and the rest of the call.
std::string failed_attempt(std::string const& query)
{
  return "DEBUG: get_printer_info() START\n"
         "DEBUG: [CMD] size=4\n"
         "DEBUG: [CMD] 0000: 1b 56 32 31\n"
         "> fwrite(1 x 4: 1b 56 32 31)\n"
         + query
         + "DEBUG: get_printer_info() END\n"
           "DEBUG: printer_info=[UNAVAILABLE]\n"
         + RETRY_END;
}

// Whichever attempt fails, and at whichever call, there is no further one.
TEST(GetPrinterInfoRetry, AFailedAttemptEndsItAtOnce)
{
  for (int before : {0, 1, 2, 30, 60}) {
    auto const nth = static_cast<std::size_t>(before);
    FakeWorld world;

    fall_asleep(world, before);
    world.fwrite_results.assign(nth, 4);
    world.fwrite_results.push_back(2);
    EXPECT_EQ(get_printer_info_retry().to_string(), UNAVAILABLE);
    EXPECT_EQ(world.transcript(), RETRY_START + asleep_attempts(before)
                                      + failed_attempt("DEBUG: fwrite() failed. ret=2\n"));

    fall_asleep(world, before);
    world.fflush_results.assign(nth, 0);
    world.fflush_results.push_back(-1);
    EXPECT_EQ(get_printer_info_retry().to_string(), UNAVAILABLE);
    EXPECT_EQ(world.transcript(),
              RETRY_START + asleep_attempts(before)
                  + failed_attempt("> fflush(stdout)\nDEBUG: fflush() failed.\n"));

    fall_asleep(world, before);
    world.drain_statuses.assign(nth, 1);
    world.drain_statuses.push_back(2);
    world.reads.push_back({"", -1});
    EXPECT_EQ(get_printer_info_retry().to_string(), UNAVAILABLE);
    EXPECT_EQ(world.transcript(),
              RETRY_START + asleep_attempts(before)
                  + failed_attempt("> fflush(stdout)\n"
                                   "> cupsSideChannelDoRequest(2, room for 512, 5.000 s)\n"
                                   "DEBUG: CUPS_SC_CMD_DRAIN_OUTPUT=CUPS_SC_STATUS_IO_ERROR(2)\n"
                                   "> cupsBackChannelRead(room for 512, 1.000 s)\n"
                                   "DEBUG: cupsBackChannelRead() failed. ret=-1\n"));
  }
}

}  // namespace
