// Each rule of when a printer is asked, by an invented clock.
#include "admin/freshness.h"

#include <gtest/gtest.h>

namespace {

using std::chrono::minutes;
using std::chrono::seconds;

constexpr FreshRules RULES{seconds(3), seconds(0), minutes(30)};
constexpr FreshRules NEVER_IDLE{seconds(3), seconds(0), seconds(0)};
constexpr FreshRules LATE{seconds(3), seconds(20), minutes(30)};

constexpr Seen QUIET{true, false, false, false, false};
constexpr Seen BUSY{true, false, true, false, false};
constexpr Seen STOPPED{false, false, false, false, false};
constexpr Seen DETACHED{false, true, false, false, false};
constexpr Seen ASKING{true, false, true, true, false};
constexpr Seen NO_ANSWER{true, false, false, false, true};

constexpr Time at(int second) { return Time(seconds(100'000 + second)); }

// A queue that was quiet at the start, and was asked then.
Freshness asked_at_start(FreshRules const& rules = RULES)
{
  Freshness const asked = after_ask(after_look(at_start(at(0)), QUIET, at(0)), rules, at(3));
  return after_look(asked, QUIET, at(4));
}

// Asked at these seconds without an answer, which came 1 second later each.
Freshness unanswered(Freshness state, std::initializer_list<int> asks)
{
  for (int const second : asks) {
    state = after_ask(state, NEVER_IDLE, at(second));
    state = after_look(state, NO_ANSWER, at(second + 1));
  }
  return state;
}

}  // namespace

TEST(Freshness, TheStartIsAskedForWhenTheQueueHasBeenQuiet)
{
  EXPECT_EQ(ask_time(at_start(at(0)), RULES), std::nullopt);
  EXPECT_EQ(ask_time(after_look(at_start(at(0)), QUIET, at(1)), RULES), at(4));
  EXPECT_EQ(ask_time(after_look(at_start(at(0)), BUSY, at(1)), RULES), std::nullopt);
}

TEST(Freshness, APrintIsAskedForWhenTheQueueHasBeenQuiet)
{
  Freshness const state = after_print(asked_at_start(), at(100));
  EXPECT_EQ(ask_time(state, RULES), at(103));
  EXPECT_EQ(ask_time(after_look(state, BUSY, at(101)), RULES), at(100) + minutes(10));
  EXPECT_EQ(ask_time(after_look(after_look(state, BUSY, at(101)), QUIET, at(110)), RULES), at(113));
  EXPECT_EQ(ask_time(after_print(state, at(102)), RULES), at(105));
}

TEST(Freshness, QuietBeginsWithTheLastEvent)
{
  Freshness const busy = after_look(after_print(asked_at_start(), at(100)), BUSY, at(101));
  EXPECT_EQ(ask_time(after_look(after_event(busy, at(108)), QUIET, at(110)), RULES), at(111));
  Freshness const quiet = after_print(asked_at_start(), at(100));
  EXPECT_EQ(ask_time(after_event(quiet, at(102)), RULES), at(105));
}

TEST(Freshness, NothingOwedIsAskedAtTheIdlePaceOrNever)
{
  EXPECT_EQ(ask_time(asked_at_start(), RULES), at(3) + minutes(30));
  EXPECT_EQ(ask_time(asked_at_start(), NEVER_IDLE), std::nullopt);
  Freshness const printed = after_ask(after_print(asked_at_start(), at(100)), RULES, at(103));
  EXPECT_EQ(ask_time(after_look(printed, QUIET, at(104)), RULES), at(103) + minutes(30));
  Freshness const busy = after_look(asked_at_start(), BUSY, at(10));
  EXPECT_EQ(ask_time(busy, RULES), std::nullopt);
  EXPECT_EQ(ask_time(after_look(busy, QUIET, at(5000)), RULES), at(5003));
}

TEST(Freshness, TwoAsksAreFifteenSecondsApart)
{
  Freshness const state = after_print(asked_at_start(), at(5));
  EXPECT_EQ(ask_time(state, RULES), at(18));
  EXPECT_EQ(ask_time(asked_at_start(), {seconds(3), seconds(0), seconds(1)}), at(18));
}

TEST(Freshness, ThePrintAndTheSettlingAreWaitedForWhicheverIsLater)
{
  EXPECT_EQ(ask_time(after_print(asked_at_start(), at(100)), LATE), at(120));
  FreshRules const often{seconds(3), seconds(20), seconds(25)};
  EXPECT_EQ(ask_time(after_print(asked_at_start(), at(100)), often), at(120))
      << "the idle time is counted from the print too";
  Freshness const state = after_event(after_print(asked_at_start(), at(100)), at(119));
  EXPECT_EQ(ask_time(state, LATE), at(122));
}

TEST(Freshness, SteadyPrintingIsInterruptedAfterTenMinutes)
{
  Freshness const one = after_look(after_print(asked_at_start(), at(100)), BUSY, at(101));
  EXPECT_EQ(ask_time(after_print(one, at(500)), RULES), at(700));
  EXPECT_EQ(ask_time(after_look(at_start(at(0)), BUSY, at(1)), RULES), std::nullopt)
      << "one job that takes its time is no steady printing";
}

TEST(Freshness, SteadyPrintingIsInterruptedAfterTwentyFivePrints)
{
  Freshness state = after_look(asked_at_start(), BUSY, at(99));
  for (int i = 0; i < 24; ++i) state = after_print(state, at(100 + i));
  EXPECT_EQ(ask_time(state, RULES), at(100) + minutes(10));
  state = after_print(state, at(124));
  EXPECT_EQ(ask_time(state, RULES), at(124));
  EXPECT_EQ(ask_time(after_look(state, QUIET, at(130)), RULES), at(124))
      << "nor does it wait for the queue to settle then";
  state = after_look(after_ask(state, RULES, at(125)), BUSY, at(126));
  EXPECT_EQ(ask_time(state, RULES), std::nullopt);
  EXPECT_EQ(ask_time(after_print(state, at(127)), RULES), at(127) + minutes(10));
}

TEST(Freshness, APrintThatIsNotCountedYetStaysOwedInSteadyPrinting)
{
  Freshness state = after_look(asked_at_start(LATE), BUSY, at(99));
  for (int i = 0; i < 25; ++i) state = after_print(state, at(100 + i));
  state = after_look(after_ask(state, LATE, at(125)), QUIET, at(126));
  EXPECT_EQ(ask_time(state, LATE), at(144));
}

TEST(Freshness, APrintIsCountedFromItsDelayOn)
{
  Freshness const printed = after_print(asked_at_start(LATE), at(100));
  FreshRules const late{seconds(3), seconds(20), seconds(0)};
  EXPECT_EQ(ask_time(after_look(after_ask(printed, late, at(119)), QUIET, at(120)), late), at(134));
  EXPECT_EQ(ask_time(after_look(after_ask(printed, late, at(120)), QUIET, at(121)), late),
            std::nullopt);
}

TEST(Freshness, APrintThatStaysOwedIsSteadyPrintingFromTheAskOn)
{
  Freshness state = after_look(after_print(asked_at_start(LATE), at(100)), BUSY, at(101));
  state = after_ask(after_print(state, at(690)), LATE, at(700));
  EXPECT_EQ(ask_time(after_look(state, BUSY, at(701)), LATE), at(700) + minutes(10));
}

TEST(Freshness, NoOtherAskWhileOneIsNotCompleted)
{
  Freshness const sent = after_ask(asked_at_start(), RULES, at(100));
  EXPECT_EQ(ask_time(after_print(sent, at(101)), RULES), std::nullopt);
  Freshness const seen = after_look(after_print(sent, at(101)), ASKING, at(200));
  EXPECT_EQ(ask_time(seen, RULES), std::nullopt);
  EXPECT_EQ(ask_time(after_look(seen, QUIET, at(300)), RULES), at(303));
}

TEST(Freshness, AQueueThatCannotBeAskedIsAskedWhenItCan)
{
  Freshness const stopped = after_look(after_print(asked_at_start(), at(100)), STOPPED, at(101));
  EXPECT_EQ(ask_time(stopped, RULES), std::nullopt);
  EXPECT_EQ(ask_time(after_look(stopped, QUIET, at(500)), RULES), at(103));
  Freshness const paused = after_look(asked_at_start(), STOPPED, at(101));
  EXPECT_EQ(ask_time(after_look(paused, QUIET, at(500)), NEVER_IDLE), std::nullopt)
      << "nothing is owed for a pause";
}

TEST(Freshness, AQueueThatWasDetachedIsAskedWhenItIsBack)
{
  Freshness const detached = after_look(asked_at_start(), DETACHED, at(100));
  EXPECT_EQ(ask_time(after_look(detached, QUIET, at(200)), NEVER_IDLE), at(18));
}

TEST(Freshness, AnAskThatAPauseHasCaughtIsOwedAgain)
{
  Freshness const sent = after_ask(asked_at_start(), NEVER_IDLE, at(100));
  Freshness const stopped = after_look(after_pause(sent), STOPPED, at(101));
  EXPECT_EQ(ask_time(after_look(stopped, QUIET, at(150)), NEVER_IDLE), at(115));
}

TEST(Freshness, AnAskThatAPauseHasCaughtIsNotOneWithoutAnswer)
{
  constexpr Seen STOPPED_NO_ANSWER{false, false, false, false, true};
  Freshness const sent = after_ask(asked_at_start(), NEVER_IDLE, at(100));
  Freshness const stopped = after_look(after_pause(sent), STOPPED_NO_ANSWER, at(101));
  EXPECT_EQ(ask_time(after_look(stopped, QUIET, at(102)), NEVER_IDLE), at(115));
}

TEST(Freshness, AnUnansweredAskIsRepeatedFourTimes)
{
  Freshness const start = after_look(at_start(at(0)), QUIET, at(0));
  EXPECT_EQ(ask_time(unanswered(start, {3}), NEVER_IDLE), at(4 + 5));
  EXPECT_EQ(ask_time(unanswered(start, {3, 9}), NEVER_IDLE), at(10 + 15));
  EXPECT_EQ(ask_time(unanswered(start, {3, 9, 25}), NEVER_IDLE), at(26 + 60));
  EXPECT_EQ(ask_time(unanswered(start, {3, 9, 25, 86}), NEVER_IDLE), at(87 + 300));
  Freshness const given_up = unanswered(start, {3, 9, 25, 86, 387});
  EXPECT_EQ(ask_time(given_up, NEVER_IDLE), std::nullopt);
  EXPECT_EQ(ask_time(given_up, RULES), at(387) + minutes(30));
}

TEST(Freshness, ALookWithoutAnAskBeforeItRepeatsNothing)
{
  Freshness const state = unanswered(after_look(at_start(at(0)), QUIET, at(0)), {3});
  EXPECT_EQ(ask_time(after_look(state, NO_ANSWER, at(6)), NEVER_IDLE), at(4 + 5));
}

TEST(Freshness, APrintBeginsTheRowOfRepetitionsAnew)
{
  Freshness const start = after_look(at_start(at(0)), QUIET, at(0));
  Freshness const printed = after_print(unanswered(start, {3, 9, 25}), at(50));
  EXPECT_EQ(ask_time(printed, NEVER_IDLE), at(53));
  EXPECT_EQ(ask_time(unanswered(printed, {53}), NEVER_IDLE), at(54 + 5));
  EXPECT_EQ(ask_time(after_print(unanswered(start, {3}), at(5)), NEVER_IDLE), at(3 + 15))
      << "the repetition at 9 is not made any more";
}

TEST(Freshness, AnAnswerEndsTheRowOfRepetitions)
{
  Freshness const start = after_look(at_start(at(0)), QUIET, at(0));
  Freshness const answered =
      after_look(after_ask(unanswered(start, {3}), NEVER_IDLE, at(9)), QUIET, at(10));
  EXPECT_EQ(ask_time(answered, NEVER_IDLE), std::nullopt);
  EXPECT_EQ(ask_time(unanswered(answered, {100}), NEVER_IDLE), at(101 + 5));
}

TEST(Freshness, ARepetitionWaitsForAQuietQueue)
{
  Freshness const state = unanswered(after_look(at_start(at(0)), QUIET, at(0)), {3});
  EXPECT_EQ(ask_time(after_look(state, BUSY, at(6)), NEVER_IDLE), std::nullopt);
  Freshness const quiet = after_look(after_look(state, BUSY, at(6)), QUIET, at(30));
  EXPECT_EQ(ask_time(quiet, NEVER_IDLE), at(33));
}

TEST(Freshness, AnAskThatTheSchedulerRefusesIsRepeatedLikeAnUnansweredOne)
{
  Freshness const start = after_look(at_start(at(0)), QUIET, at(0));
  Freshness const refused = after_refusal(start, NEVER_IDLE, at(3));
  EXPECT_EQ(ask_time(refused, NEVER_IDLE), at(3 + 5));
  EXPECT_EQ(ask_time(after_refusal(refused, NEVER_IDLE, at(8)), NEVER_IDLE), at(8 + 15));
}
