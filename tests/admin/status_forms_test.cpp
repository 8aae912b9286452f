#include "admin/status_forms.h"

#include <gtest/gtest.h>

#include "tests/harness/same_text.h"

namespace {

// An attached queue with half a ribbon, asked two minutes ago.
Queue queue_at(std::optional<int> level, std::vector<std::string> reasons = {})
{
  Queue queue{};
  queue.name = "photo";
  queue.state = IPP_PSTATE_IDLE;
  queue.reasons = std::move(reasons);
  queue.accepting = true;
  queue.device = "socket://h";
  queue.commands = {"ReportLevels", "ReportStatus"};
  queue.level = level;
  queue.ribbon = "Ribbon Type: 13x18(5x7″)";
  queue.message = "Prints Remaining = 350 / 700";
  queue.level_time = level ? 1000 : 0;
  queue.up_time = 1120;
  return queue;
}

std::string verdict(Queue const& queue) { return verdict_text(verdict_of(queue, 10)); }

QueueStatus status_of(Queue const& queue, std::string_view ppd = {})
{
  return make_queue_status(queue, ppd, 10);
}

constexpr char const* JAM = "com.velmo-error0001";
constexpr char const* USED_UP = "com.velmo-error0005";
constexpr char const* TWO_CODES = "com.velmo-error0021";
constexpr char const* SILENT = "com.velmo-error0023";

}  // namespace

TEST(Verdict, FollowsTheLevel)
{
  EXPECT_EQ(verdict(queue_at(100)), "ready");
  EXPECT_EQ(verdict(queue_at(10)), "ready");
  EXPECT_EQ(verdict(queue_at(9)), "ribbon low");
  EXPECT_EQ(verdict(queue_at(0)), "ribbon used up");
  EXPECT_EQ(verdict(queue_at(-1)), "unknown level");
  EXPECT_EQ(verdict(queue_at({})), "never asked");
}

TEST(Verdict, ASilentPrinterHasNoLevelAndItsReasonOrNone)
{
  EXPECT_EQ(verdict(queue_at(-2)), "does not answer");
  EXPECT_EQ(verdict(queue_at(-2, {SILENT})), "does not answer");
  EXPECT_EQ(verdict(queue_at({}, {SILENT})), "does not answer");
  EXPECT_EQ(verdict(queue_at(-2, {"connecting-to-device"})), "does not answer");
}

TEST(Verdict, AnUnknownCodeOfAPrinterThatAnswersIsAnError)
{
  EXPECT_EQ(verdict(queue_at(50, {SILENT})), "printer error");
  EXPECT_EQ(verdict(queue_at(-1, {SILENT})), "printer error");
}

TEST(Verdict, AnErrorGoesBeforeTheLevel)
{
  EXPECT_EQ(verdict(queue_at(5, {JAM})), "printer error");
  EXPECT_EQ(verdict(queue_at({}, {JAM})), "printer error");
  EXPECT_EQ(verdict(queue_at(-2, {JAM})), "printer error");
  EXPECT_EQ(verdict(queue_at(0, {USED_UP})), "ribbon used up");
  EXPECT_EQ(verdict(queue_at(50, {USED_UP})), "printer error");
  EXPECT_EQ(verdict(queue_at(50, {"media-low-warning"})), "ready");
}

TEST(Verdict, TheQueueGoesBeforeThePrinter)
{
  Queue queue = queue_at(0, {JAM});
  queue.state = IPP_PSTATE_STOPPED;
  EXPECT_EQ(verdict(queue), "queue stopped");
  queue.commands = {"ReportLevels"};
  EXPECT_EQ(verdict(queue), "not attached");
}

TEST(FilterFault, NamesWhatTheSchedulerSaysOfAFilter)
{
  for (std::string const reason : {"cups-missing-filter-warning", "cups-insecure-filter-warning"})
    EXPECT_EQ(filter_fault(queue_at(50, {JAM, reason})),
              "the scheduler does not start a filter of the queue (" + reason + ")");
  EXPECT_EQ(filter_fault(queue_at(50, {JAM})), "");
}

TEST(QueueStatus, ReadsWhatTheFilterReported)
{
  QueueStatus const status = status_of(queue_at(50));
  EXPECT_EQ(status.ribbon, "13x18(5x7″)");
  ASSERT_TRUE(status.prints);
  EXPECT_EQ(status.prints->left, 350);
  EXPECT_EQ(status.prints->total, 700);
  EXPECT_EQ(status.age, 120);
}

TEST(QueueStatus, NoPrintsLeftAreACountToo)
{
  Queue queue = queue_at(0);
  queue.message = "Prints Remaining = 0 / 700";
  ASSERT_TRUE(status_of(queue).prints);
  EXPECT_EQ(status_of(queue).prints->left, 0);
}

TEST(QueueStatus, WhatIsNotKnownIsNothing)
{
  for (char const* message : {"", " ", "1 / 2", "Prints Remaining = ", "Prints Remaining = 1",
                              "Prints Remaining = 1 / ", "Prints Remaining = 1 / 2 ",
                              "Prints Remaining = -1 / 2", "Prints Remaining = 99999999999 / 2"}) {
    Queue queue = queue_at(50);
    queue.message = message;
    EXPECT_FALSE(status_of(queue).prints) << message;
  }
  Queue queue = queue_at({});
  queue.ribbon = " ";
  EXPECT_EQ(status_of(queue).ribbon, "");
  EXPECT_EQ(status_of(queue).age, std::nullopt);
}

TEST(QueueStatus, ASilentPrinterHasNoRibbon)
{
  Queue queue = queue_at(-2);
  queue.ribbon = "Ribbon Type: 00";
  EXPECT_EQ(status_of(queue).ribbon, "");
  queue.level = -1;
  EXPECT_EQ(status_of(queue).ribbon, "00");
}

TEST(QueueStatus, AClockThatWentBackMakesNoAgeBelowZero)
{
  Queue queue = queue_at(50);
  queue.up_time = 900;
  EXPECT_EQ(status_of(queue).age, 0);
}

TEST(QueueStatus, AReasonHasItsTextAndCodes)
{
  constexpr char const* PPD =
      "*LanguageEncoding: ISOLatin1\n*cupsIPPReason com.velmo-error0001/T\xfcr: \"\"\n";
  std::vector<ShownReason> const reasons =
      status_of(queue_at(50, {JAM, USED_UP, SILENT}), PPD).reasons;
  ASSERT_EQ(reasons.size(), 3u);
  EXPECT_EQ(reasons[0].text, "Tür");
  EXPECT_EQ(reasons[0].codes, std::vector<std::string>{"06 02 02"});
  EXPECT_EQ(reasons[1].text, "");
  EXPECT_EQ(reasons[1].codes, std::vector<std::string>{"05 02 02"});
  EXPECT_EQ(reasons[2].codes, std::vector<std::string>{});
}

TEST(QueueStatus, ATextWithoutAColonIsNone)
{
  constexpr char const* PPD =
      "*cupsIPPReason com.velmo-error0001/Lost\n*cupsIPPReason com.velmo-error0001/Jam.: \"\"\n";
  EXPECT_EQ(status_of(queue_at(50, {JAM}), PPD).reasons.at(0).text, "Jam.");
}

TEST(StatusText, ShowsAllThereIs)
{
  Queue queue = queue_at(50, {JAM, SILENT, "x\x1b"});
  queue.jobs = 2;
  queue.accepting = false;
  queue.state_message = "out of order";
  EXPECT_EQ(status_text(status_of(queue, "*cupsIPPReason com.velmo-error0001/Jam.: \"\"\n"), false),
            "photo  printer error\n"
            "  Ribbon   [###############...............]  50 %   350 of 700 prints, 13x18(5x7″)\n"
            "  Asked    2 min ago\n"
            "  Reason   Jam.  (com.velmo-error0001, code 06 02 02)\n"
            "  Reason   com.velmo-error0023\n"
            "  Reason   x?\n"
            "  Message  out of order\n"
            "  Jobs     are rejected\n"
            "  Jobs     2 waiting or printing\n");
}

TEST(StatusText, ShowsNothingThatIsNotThere)
{
  EXPECT_EQ(status_text(status_of(queue_at({})), false), "photo  never asked\n  Asked    never\n");
  Queue queue = queue_at(-2);
  queue.message = queue.ribbon = "";
  EXPECT_EQ(status_text(status_of(queue), false),
            "photo  does not answer\n  Ribbon   level not known\n  Asked    2 min ago\n");
}

TEST(StatusText, ARibbonWithoutCountsIsShown)
{
  Queue queue = queue_at(-1);
  queue.message = " ";
  EXPECT_TEXT(status_text(status_of(queue), false),
              "photo  unknown level\n"
              "  Ribbon   level not known   13x18(5x7″)\n"
              "  Asked    2 min ago\n");
}

TEST(StatusText, AReasonIsShownWithAllItsCodesOrNone)
{
  Queue const queue = queue_at(50, {TWO_CODES, SILENT});
  EXPECT_TEXT(
      status_text(status_of(queue, "*cupsIPPReason com.velmo-error0023/Odd.: \"\"\n"), false)
          .substr(std::string("photo  printer error\n").size()),
      "  Ribbon   [###############...............]  50 %   350 of 700 prints, 13x18(5x7″)\n"
      "  Asked    2 min ago\n"
      "  Reason   com.velmo-error0021  (code 0d 08 07 or 0e 08 07)\n"
      "  Reason   Odd.  (com.velmo-error0023)\n");
}

TEST(StatusText, EachSeverityHasItsColour)
{
  EXPECT_EQ(status_text(status_of(queue_at(50)), true).substr(0, 22),
            "photo  \x1b[32mready\x1b[0m\n");
  EXPECT_EQ(status_text(status_of(queue_at(5)), true).substr(7, 5), "\x1b[33m");
  EXPECT_EQ(status_text(status_of(queue_at(-1)), true).substr(7, 5), "\x1b[33m");
  EXPECT_EQ(status_text(status_of(queue_at(0)), true).substr(7, 5), "\x1b[31m");
}

TEST(StatusText, TheGaugeGoesFromNothingToAHundred)
{
  EXPECT_NE(status_text(status_of(queue_at(0)), false).find("[" + std::string(30, '.') + "]  0 %"),
            std::string::npos);
  EXPECT_NE(
      status_text(status_of(queue_at(99)), false).find("[" + std::string(29, '#') + ".]  99 %"),
      std::string::npos);
  EXPECT_NE(
      status_text(status_of(queue_at(140)), false).find("[" + std::string(30, '#') + "]  140 %"),
      std::string::npos);
}

TEST(StatusText, AJobAloneIsCounted)
{
  Queue queue = queue_at({});
  queue.jobs = 1;
  EXPECT_EQ(status_text(status_of(queue), false),
            "photo  never asked\n  Asked    never\n  Jobs     1 waiting or printing\n");
}

TEST(StatusText, AnAgeIsToldInItsUnit)
{
  for (auto const& [seconds, text] : {std::pair{59, "59 s"},
                                      {60, "1 min"},
                                      {3599, "59 min"},
                                      {3600, "1 h"},
                                      {172799, "47 h"},
                                      {172800, "2 days"},
                                      {259199, "2 days"}}) {
    Queue queue = queue_at(50);
    queue.up_time = queue.level_time + seconds;
    EXPECT_NE(status_text(status_of(queue), false).find("Asked    " + std::string(text) + " ago"),
              std::string::npos)
        << text;
  }
}

TEST(StatusJson, NumbersAreNumbersAndWhatIsAbsentIsNull)
{
  Queue queue = queue_at(-2, {USED_UP});
  queue.message = queue.ribbon = "";
  EXPECT_EQ(status_json({status_of(queue)}), R"([
  {
    "queue": "photo",
    "verdict": "printer-error",
    "state": "idle",
    "state_message": "",
    "accepting": true,
    "jobs": 0,
    "level": null,
    "level_raw": -2,
    "ribbon": null,
    "prints_left": null,
    "prints_total": null,
    "age_seconds": 120,
    "reasons": [
      {
        "keyword": "com.velmo-error0005",
        "text": null,
        "codes": [
          "05 02 02"
        ]
      }
    ],
    "attached": true,
    "device": "socket://h"
  }
])");
  EXPECT_EQ(status_json({}), "[]");
}

TEST(StatusJson, WhatIsKnownIsThere)
{
  Queue queue = queue_at(50, {JAM});
  queue.jobs = 2;
  queue.accepting = false;
  queue.state_message = "out of order";
  std::string const all = R"json([
  {
    "queue": "photo",
    "verdict": "printer-error",
    "state": "idle",
    "state_message": "out of order",
    "accepting": false,
    "jobs": 2,
    "level": 50,
    "level_raw": 50,
    "ribbon": "13x18(5x7″)",
    "prints_left": 350,
    "prints_total": 700,
    "age_seconds": 120,
    "reasons": [
      {
        "keyword": "com.velmo-error0001",
        "text": "Jam.",
        "codes": [
          "06 02 02"
        ]
      }
    ],
    "attached": true,
    "device": "socket://h"
  }
])json";
  constexpr char const* PPD = "*cupsIPPReason com.velmo-error0001/Jam.: \"\"\n";
  EXPECT_TEXT(status_json({status_of(queue, PPD)}), all);
  EXPECT_NE(status_json({status_of(queue_at(0))}).find("\"level\": 0,"), std::string::npos);
}

TEST(StatusJson, WithoutASchedulerNothingElseIsKnown)
{
  std::string const all = R"([
  {
    "queue": null,
    "verdict": "scheduler-not-reachable",
    "state": null,
    "state_message": null,
    "accepting": null,
    "jobs": null,
    "level": null,
    "level_raw": null,
    "ribbon": null,
    "prints_left": null,
    "prints_total": null,
    "age_seconds": null,
    "reasons": [],
    "attached": null,
    "device": null
  }
])";
  EXPECT_TEXT(unreachable_json({}), all);
  std::string one = all;
  one.replace(one.find("null"), 4, "\"photo\"");
  EXPECT_TEXT(unreachable_json({"photo"}), one);
  std::string const two = unreachable_json({"photo", "booth\xff"});
  EXPECT_LT(two.find("\"photo\""), two.find("\"booth\xef\xbf\xbd\""));
}

TEST(StatusJson, AQueueNeverAskedHasNeitherLevelNorAge)
{
  std::string const text = status_json({status_of(queue_at({}))});
  for (char const* line : {"\"level\": null", "\"level_raw\": null", "\"age_seconds\": null"})
    EXPECT_NE(text.find(line), std::string::npos) << line << " is not in " << text;
}

TEST(StatusJson, EveryStateHasItsName)
{
  Queue queue = queue_at(50);
  queue.state = IPP_PSTATE_PROCESSING;
  EXPECT_NE(status_json({status_of(queue)}).find("\"state\": \"printing\""), std::string::npos);
  queue.state = IPP_PSTATE_STOPPED;
  EXPECT_NE(status_json({status_of(queue)}).find("\"state\": \"stopped\""), std::string::npos);
}

TEST(StatusCheck, IsOneLineWithFigures)
{
  CheckLine const line = status_check(status_of(queue_at(50)), {});
  EXPECT_EQ(line.text,
            "VELMO OK - photo: ready, ribbon 50 % | ribbon=50%;10:;3:;0;100 prints=350;;;0;700 "
            "age=120s;;;0 jobs=0;;;0");
  EXPECT_EQ(check_exit_status(line.severity), 0);
}

TEST(StatusCheck, TheLimitsDecide)
{
  auto const exit_status = [](Queue const& queue, CheckLimits const& limits) {
    return check_exit_status(
        status_check(make_queue_status(queue, {}, limits.warning), limits).severity);
  };
  EXPECT_EQ(exit_status(queue_at(9), {}), 1);
  EXPECT_EQ(exit_status(queue_at(3), {}), 1);
  EXPECT_EQ(exit_status(queue_at(2), {}), 2);
  EXPECT_EQ(exit_status(queue_at(50), {60, 3, {}}), 1);
  EXPECT_EQ(exit_status(queue_at(50), {60, 51, {}}), 2);
  EXPECT_EQ(exit_status(queue_at(50), {10, 3, 119}), 1);
  EXPECT_EQ(exit_status(queue_at(50), {10, 3, 120}), 0);
  EXPECT_EQ(exit_status(queue_at(-2), {10, 3, 119}), 3);
  EXPECT_EQ(exit_status(queue_at(-1), {}), 3);
  EXPECT_EQ(exit_status(queue_at({}), {}), 3);
  EXPECT_EQ(exit_status(queue_at(50, {JAM}), {}), 2);
  // The next ask may fail, or the next print.
  for (char const* fault : {"cups-missing-filter-warning", "cups-insecure-filter-warning"}) {
    EXPECT_EQ(exit_status(queue_at(50, {fault}), {}), 3) << fault;
    EXPECT_EQ(exit_status(queue_at(2, {fault}), {}), 2) << fault;
  }
  Queue detached = queue_at(0);
  detached.commands = {};
  EXPECT_EQ(exit_status(detached, {}), 2);
  Queue stopped = queue_at(50);
  stopped.state = IPP_PSTATE_STOPPED;
  EXPECT_EQ(exit_status(stopped, {}), 2);
}

TEST(StatusCheck, SaysTheReasonsTextAndHowOldTheLevelIs)
{
  EXPECT_EQ(status_check(status_of(queue_at(50, {JAM}),
                                   "*cupsIPPReason com.velmo-error0001/Paper jam.: \"\"\n"),
                         {10, 3, 119})
                .text,
            "VELMO CRITICAL - photo: printer error, ribbon 50 %, Paper jam., asked 120 s ago | "
            "ribbon=50%;10:;3:;0;100 prints=350;;;0;700 age=120s;119;;0 jobs=0;;;0");
}

TEST(StatusCheck, ALevelOfNothingIsShownAndOneThatIsNotKnownIsNot)
{
  Queue queue = queue_at(0);
  queue.message = "";
  EXPECT_EQ(status_check(status_of(queue), {}).text,
            "VELMO CRITICAL - photo: ribbon used up, ribbon 0 % | ribbon=0%;10:;3:;0;100 "
            "age=120s;;;0 jobs=0;;;0");
  queue.level = -1;
  EXPECT_EQ(status_check(status_of(queue), {}).text,
            "VELMO UNKNOWN - photo: unknown level | age=120s;;;0 jobs=0;;;0");
  queue.level = 9;
  EXPECT_EQ(status_check(status_of(queue), {}).text,
            "VELMO WARNING - photo: ribbon low, ribbon 9 % | ribbon=9%;10:;3:;0;100 "
            "age=120s;;;0 jobs=0;;;0");
}

TEST(StatusCheck, AQueueNeverAskedIsNotOld)
{
  Queue queue = queue_at({});
  queue.message = "";
  EXPECT_EQ(status_check(status_of(queue), {10, 3, 0}).text,
            "VELMO UNKNOWN - photo: never asked | jobs=0;;;0");
}

TEST(StatusCheck, ABarInATextIsNoBeginningOfFigures)
{
  Queue queue = queue_at({}, {"a|b"});
  queue.name = "z|id>x|e;";
  queue.message = "";
  EXPECT_EQ(status_check(status_of(queue), {}).text,
            "VELMO UNKNOWN - z/id>x/e;: never asked, a/b | jobs=0;;;0");
}

TEST(SeveralServers, EachFormNamesTheQueuesServer)
{
  QueueStatus status = status_of(queue_at(50));
  EXPECT_EQ(status_json({status}).find("\"server\""), std::string::npos);
  status.server = "a:1631|";
  EXPECT_EQ(status_text(status, false).substr(0, 20), "photo@a:1631|  ready");
  EXPECT_EQ(status_check(status, {}).text.substr(0, 30), "VELMO OK - photo@a:1631/: read");
  EXPECT_NE(status_json({status}).find("\"queue\": \"photo\",\n    \"server\": \"a:1631|\",\n"),
            std::string::npos);
}

TEST(SeveralServers, OneThatIsAwayStandsAtTheEnd)
{
  QueueStatus status = status_of(queue_at(50));
  status.server = "a";
  std::string const text = status_json({status}, {"b", "c"});
  std::string const away =
      "\"queue\": null,\n    \"server\": \"b\",\n    \"verdict\": "
      "\"scheduler-not-reachable\",\n    \"state\": null,\n";
  EXPECT_LT(text.find("\"server\": \"a\""), text.find(away));
  EXPECT_LT(text.find(away), text.find("\"server\": \"c\""));
  EXPECT_NE(text.find("\"server\": \"c\""), std::string::npos);
}
