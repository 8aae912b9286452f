// The turns in which many queues are asked.
#include "admin/ask_turns.h"

#include <gtest/gtest.h>

#include "tests/fresh/fake_events.h"

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

constexpr Time START = Time(seconds(100'000));
constexpr FreshRules RULES{seconds(0), seconds(0), seconds(0)};
constexpr int QUEUES = 20;

std::string name_of(int number) { return "q" + std::to_string(number); }

// The names of some queues in a row.
std::string names(int first, int last)
{
  std::string all;
  for (int i = first; i <= last; ++i) all += name_of(i) + " ";
  return all;
}

class AskTurnsOfMany : public testing::Test {
protected:
  AskTurnsOfMany()
  {
    testing::internal::CaptureStderr();
    for (int i = 1; i <= QUEUES; ++i)
      queues.push_back(watch(name_of(i), Duration::zero(), RULES, START));
  }
  ~AskTurnsOfMany() override
  {
    close_stream(stream);
    testing::internal::GetCapturedStderr();
  }

  // Does what is due so long after the start, and tells which printers were asked.
  std::string askedAt(Duration when)
  {
    fake.requests.clear();
    fake.now = START + when;
    next = tend_in_turns(stream, queues, turns, fake.now);
    constexpr std::string_view ASK = "Print-Job ";
    std::string asked;
    for (auto at = fake.requests.find(ASK); at != std::string::npos;
         at = fake.requests.find(ASK, at)) {
      at += ASK.size();
      asked += fake.requests.substr(at, fake.requests.find('\n', at) - at) + " ";
    }
    return asked;
  }

  // The printers of these queues have answered.
  void answer(int first, int last)
  {
    for (int i = first; i <= last; ++i) {
      fake.open.erase(name_of(i));
      fake.kept.push_back({static_cast<int>(fake.kept.size()) + 1, fake.time, false, name_of(i)});
    }
  }

  // A photo has been printed on each of these queues.
  void print(int first, int last, Duration when)
  {
    for (int i = first - 1; i < last; ++i)
      queues[static_cast<std::size_t>(i)].state =
          after_print(queues[static_cast<std::size_t>(i)].state, START + when);
  }

  FakeEvents fake;
  FakeEventSource const source{fake};
  EventStream stream = open_stream("fake", seconds(2), START);
  std::vector<WatchedQueue> queues;
  AskTurns turns{};
  Time next;
};

}  // namespace

TEST_F(AskTurnsOfMany, EightAreOnTheirWayAtATime)
{
  EXPECT_EQ(askedAt(seconds(0)), names(1, 8));
  EXPECT_EQ(askedAt(milliseconds(500)), "");
  answer(2, 4);
  EXPECT_EQ(askedAt(milliseconds(1000)), "") << "their events are only heard of";
  EXPECT_EQ(askedAt(milliseconds(1500)), names(9, 11));
  EXPECT_EQ(askedAt(milliseconds(2000)), "");
}

TEST_F(AskTurnsOfMany, WhatALookFindsEndedBetweenTwoPollsMakesNoRoomYet)
{
  askedAt(seconds(0));
  answer(1, 8);
  for (WatchedQueue& queue : queues) queue.has_changed = true;
  EXPECT_EQ(askedAt(milliseconds(100)), "");
  EXPECT_EQ(askedAt(milliseconds(200)), "");
  EXPECT_EQ(askedAt(milliseconds(500)), names(9, 16));
}

TEST_F(AskTurnsOfMany, WhileSomeWaitItIsPolledSoonerButNotWithoutAPause)
{
  askedAt(seconds(0));
  EXPECT_EQ(next, START + milliseconds(500));
  askedAt(milliseconds(100));
  EXPECT_EQ(next, START + milliseconds(500));
  answer(1, 8);
  askedAt(milliseconds(500));
  askedAt(milliseconds(1000));
  answer(9, 16);
  askedAt(milliseconds(1500));
  askedAt(milliseconds(2000));
  EXPECT_EQ(next, START + seconds(4)) << "the last four are on their way, and nobody waits";
}

TEST_F(AskTurnsOfMany, WhereThereIsRoomAnAskIsSentAsSoonAsItIsDue)
{
  queues.resize(3);
  askedAt(seconds(0));
  answer(1, 3);
  askedAt(seconds(2));
  print(1, 3, seconds(2));
  EXPECT_EQ(askedAt(milliseconds(14'900)), "");
  EXPECT_EQ(next, START + seconds(15));
}

TEST_F(AskTurnsOfMany, PrintersThatDoNotAnswerKeepTheOthersWaitingForAWhileOnly)
{
  askedAt(seconds(0));
  EXPECT_EQ(askedAt(milliseconds(14'900)), "");
  EXPECT_EQ(askedAt(milliseconds(15'400)), names(9, 16));
}

TEST_F(AskTurnsOfMany, TheLastOnesAreAskedBeforeTheFirstAreAskedAgain)
{
  askedAt(seconds(0));
  answer(1, 8);
  askedAt(milliseconds(500));
  print(1, 8, milliseconds(500));
  EXPECT_EQ(askedAt(seconds(16)), names(9, 16));
  answer(9, 16);
  askedAt(seconds(17));
  EXPECT_EQ(askedAt(seconds(18)), names(17, 20) + names(1, 4));
}

TEST_F(AskTurnsOfMany, WithoutASubscriptionAllAreAskedAtOnce)
{
  fake.has_room = false;
  EXPECT_EQ(askedAt(seconds(0)), names(1, 20));
  answer(1, 20);
  for (WatchedQueue& queue : queues) queue.has_changed = true;
  askedAt(seconds(1));
  print(1, 20, seconds(1));
  EXPECT_EQ(askedAt(seconds(16)), names(1, 20));
}
