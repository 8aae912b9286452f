// What an event means for the queue that it came about.
#include "admin/heard_events.h"

#include <gtest/gtest.h>

#include "tests/fresh/fake_events.h"

namespace {

using std::chrono::seconds;

constexpr Time START = Time(seconds(100'000));
constexpr FreshRules RULES{seconds(3), seconds(0), seconds(0)};
constexpr Seen QUIET{true, false, false, false, false};

WatchedQueue quiet_queue()
{
  WatchedQueue queue = watch("photo", std::nullopt, RULES, START);
  queue.state = after_look(queue.state, QUIET, START);
  return queue;
}

Event state_event(ipp_pstate_t state, int time)
{
  Event event{};
  event.queue = "photo";
  event.queue_state = state;
  event.time = time;
  return event;
}

void hear_state(WatchedQueue& queue, ipp_pstate_t state, int time)
{
  hear({}, queue, state_event(state, time), START + seconds(time));
}

// Whether a job that the scheduler has forgotten, begun at 1000, is taken for a print.
bool is_print(FakeEvents fake)
{
  FakeEventSource const source(fake);
  fake.forgets = true;
  WatchedQueue queue = quiet_queue();
  hear_state(queue, IPP_PSTATE_PROCESSING, 1000);
  Event ended{};
  ended.is_job_end = true;
  ended.job_state = IPP_JSTATE_COMPLETED;
  ended.job = 1;
  hear({}, queue, ended, START);
  return queue.state.prints == 1;
}

}  // namespace

TEST(HeardEvents, AQueueIsFoundByItsNameInAnyCase)
{
  std::vector<WatchedQueue> queues{watch("photo", std::nullopt, RULES, START),
                                   watch("Booth", std::nullopt, RULES, START)};
  EXPECT_EQ(find_queue(queues, "bootH"), &queues[1]);
  EXPECT_EQ(find_queue(queues, "booths"), nullptr);
}

TEST(HeardEvents, AQueueThatIsQuietStaysQuietWhenItsReasonsChange)
{
  WatchedQueue queue = quiet_queue();
  hear_state(queue, IPP_PSTATE_IDLE, 2);
  EXPECT_TRUE(queue.has_changed);
  EXPECT_EQ(ask_time(queue.state, RULES), START + seconds(3));
  hear_state(queue, IPP_PSTATE_PROCESSING, 2);
  EXPECT_EQ(ask_time(queue.state, RULES), START + seconds(5));
}

TEST(HeardEvents, AJobBeginsWhenItsQueueBeginsToPrint)
{
  WatchedQueue queue = quiet_queue();
  hear_state(queue, IPP_PSTATE_PROCESSING, 10);
  hear_state(queue, IPP_PSTATE_PROCESSING, 11);
  EXPECT_EQ(queue.begun, 10);
  hear_state(queue, IPP_PSTATE_IDLE, 12);
  hear_state(queue, IPP_PSTATE_PROCESSING, 13);
  EXPECT_EQ(queue.begun, 13);
}

TEST(HeardEvents, WhatWentUnseenMayHaveBegunAJob)
{
  WatchedQueue queue = quiet_queue();
  hear_state(queue, IPP_PSTATE_PROCESSING, 10);
  lose_track(queue);
  EXPECT_EQ(queue.begun, 0);
  hear_state(queue, IPP_PSTATE_PROCESSING, 20);
  EXPECT_EQ(queue.begun, 20);
}

TEST(HeardEvents, AForgottenJobIsAPrintUnlessALevelHasComeSince)
{
  FakeEvents fake;
  fake.level_time = 999;
  EXPECT_TRUE(is_print(fake));
  fake.level_time = 1001;
  EXPECT_FALSE(is_print(fake));
  fake.time = 1000;
  EXPECT_TRUE(is_print(fake)) << "the level is of before the clock was set back";
}
