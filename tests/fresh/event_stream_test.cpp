// The one subscription: what it asks for, how long it lives, and what follows from its loss.
#include "admin/event_stream.h"

#include <gtest/gtest.h>

#include "tests/fresh/fake_events.h"

namespace {

using std::chrono::minutes;
using std::chrono::seconds;

constexpr Time START = Time(seconds(100'000));
constexpr FreshRules RULES{seconds(3), seconds(0), seconds(0)};
constexpr char const* SUBSCRIBES =
    "Create-Printer-Subscriptions job-completed printer-state-changed printer-config-changed "
    "ippget 3600\n";

class EventStreams : public testing::Test {
protected:
  EventStreams() { testing::internal::CaptureStderr(); }
  ~EventStreams() override
  {
    close_stream(stream);
    testing::internal::GetCapturedStderr();
  }

  // Listens so long after the start, and tells what was asked for then.
  std::string requestsAt(Duration when)
  {
    fake.requests.clear();
    next = keep_listening(stream, queues, START + when);
    return fake.requests;
  }

  FakeEvents fake;
  FakeEventSource const source{fake};
  EventStream stream = open_stream("fake", seconds(2), START);
  std::vector<WatchedQueue> queues{watch("photo", std::nullopt, RULES, START)};
  Time next;
};

}  // namespace

TEST_F(EventStreams, OneSubscriptionWithALeaseIsForEverythingThatMatters)
{
  EXPECT_EQ(requestsAt(seconds(0)), SUBSCRIBES);
  EXPECT_EQ(next, START + seconds(2));
  EXPECT_EQ(requestsAt(seconds(1)), "");
  EXPECT_EQ(requestsAt(seconds(2)), "Get-Notifications 7 1\n");
}

TEST_F(EventStreams, TheLeaseIsRenewedInTime)
{
  requestsAt(seconds(0));
  EXPECT_EQ(requestsAt(minutes(29)), "Get-Notifications 7 1\n");
  EXPECT_EQ(requestsAt(minutes(30)), "Get-Notifications 7 1\nRenew-Subscription 7 3600\n");
  EXPECT_EQ(requestsAt(minutes(59)), "Get-Notifications 7 1\n");
  EXPECT_EQ(requestsAt(minutes(60)), "Get-Notifications 7 1\nRenew-Subscription 7 3600\n");
}

TEST_F(EventStreams, WhereThereIsNoRoomItIsTriedAgainAndThenEveryPrinterIsOwedAnAsk)
{
  fake.has_room = false;
  EXPECT_EQ(requestsAt(seconds(0)), SUBSCRIBES);
  EXPECT_EQ(next, START + seconds(15));
  queues[0].state.is_owed = false;
  EXPECT_EQ(requestsAt(seconds(15)), SUBSCRIBES);
  EXPECT_FALSE(queues[0].state.is_owed);
  fake.has_room = true;
  EXPECT_EQ(requestsAt(seconds(30)), SUBSCRIBES);
  EXPECT_TRUE(queues[0].state.is_owed);
}

TEST_F(EventStreams, LostEventsAreAPrintThatNobodySaw)
{
  requestsAt(seconds(0));
  fake.kept = {{1, 5000, false}};
  requestsAt(seconds(2));
  queues[0].state.is_owed = false;
  queues[0].begun = 4000;
  fake.kept = {{900, 5000, false}, {901, 5000, false}};
  EXPECT_EQ(requestsAt(seconds(4)),
            std::string("Get-Notifications 7 1\nCancel-Subscription 7\n") + SUBSCRIBES);
  EXPECT_TRUE(queues[0].state.is_owed);
  EXPECT_EQ(queues[0].begun, 0);
  fake.kept.clear();
  EXPECT_EQ(requestsAt(seconds(6)), "Get-Notifications 8 1\n");
}

TEST_F(EventStreams, ThousandsOfEventsAtOnceAreAllHeardInOneGo)
{
  requestsAt(seconds(0));
  constexpr int MANY = 5000;
  for (int i = 1; i <= MANY; ++i) fake.kept.push_back({i, 5000, true});
  requestsAt(seconds(2));
  EXPECT_EQ(queues[0].state.prints, MANY);
  EXPECT_EQ(requestsAt(seconds(4)), "Get-Notifications 7 5000\n");
  EXPECT_EQ(queues[0].state.prints, MANY) << "the last one is fetched again, and is none";
}

TEST_F(EventStreams, ASchedulerThatIsBackFindsTheOldSubscriptionCancelled)
{
  requestsAt(seconds(0));
  fake.is_there = false;
  EXPECT_EQ(requestsAt(seconds(2)), "Get-Notifications 7 1\n");
  EXPECT_EQ(next, START + seconds(4));
  EXPECT_EQ(requestsAt(seconds(4)), "");
  fake.is_there = true;
  EXPECT_EQ(requestsAt(seconds(6)), std::string("Cancel-Subscription 7\n") + SUBSCRIBES);
  EXPECT_EQ(requestsAt(seconds(8)), "Get-Notifications 8 1\n");
}

TEST_F(EventStreams, APrintIsDatedBetweenTwoPollsWhateverTheSchedulersClockDoes)
{
  requestsAt(seconds(0));
  fake.kept = {{1, 1, true}};
  requestsAt(seconds(2));
  EXPECT_EQ(queues[0].state.last_print, START) << "its clock was set to a later time";
  fake.kept.push_back({2, 9000, true});
  requestsAt(seconds(4));
  EXPECT_EQ(queues[0].state.last_print, START + seconds(4)) << "its clock was set back";
}

TEST_F(EventStreams, TheEndCancelsTheSubscription)
{
  requestsAt(seconds(0));
  fake.requests.clear();
  close_stream(stream);
  EXPECT_EQ(fake.requests, "Cancel-Subscription 7\n");
}
