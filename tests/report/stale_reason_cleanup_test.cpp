// Which reasons are removed, and that the destination list is freed exactly once.
#include "report/stale_reason_cleanup.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/harness/fake_destinations.h"
#include "tests/harness/fake_world.h"
#include "tests/harness/same_text.h"

namespace {

std::string const OPTION = "printer-state-reasons";

// Everything that happens in one run.
std::string cleaned(FakeDestinations const&)
{
  FakeWorld world;
  clean_printer_state();
  return world.transcript();
}

// A run that finds a default destination and writes these lines about its reasons.
std::string run_with(std::string const& states)
{
  return "clean_printer_state() START\n"
         "> cupsGetDests()\n"
         "> cupsGetDest(NULL, NULL, the list)\n"
         "> cupsGetOption(printer-state-reasons, the default's options)\n"
         + states
         + "> cupsFreeDests(the list)\n"
           "clean_printer_state() END\n";
}

std::string const RUN_WITHOUT_DEFAULT =
    "clean_printer_state() START\n"
    "> cupsGetDests()\n"
    "> cupsGetDest(NULL, NULL, the list)\n"
    "DEBUG: Not found default(destination) printer.\n"
    "> cupsFreeDests(the list)\n"
    "clean_printer_state() END\n";

// The run when the default destination, one of several, has these reasons.
std::string cleaned(std::string const& reasons)
{
  return cleaned(FakeDestinations({
      {"another", false, {{OPTION, "of-another"}}},
      {"mine", true, {{"copies", "1"}, {OPTION, reasons}, {"zoom", "50"}}},
      {"third", false, {{OPTION, "of-the-third"}}},
  }));
}

TEST(StaleReasonCleanup, OneReasonIsRemoved)
{
  EXPECT_TEXT(cleaned("com.velmo-error0013"), run_with("STATE: -com.velmo-error0013\n"));
}

TEST(StaleReasonCleanup, ReasonsOfAnyVocabularyAreRemoved)
{
  EXPECT_TEXT(cleaned("none"), run_with("STATE: -none\n"));
  EXPECT_TEXT(cleaned("paused"), run_with("STATE: -paused\n"));
  EXPECT_TEXT(cleaned("media-empty-error,cups-insecure-filter-warning"),
              run_with("STATE: -media-empty-error\nSTATE: -cups-insecure-filter-warning\n"));
}

TEST(StaleReasonCleanup, ReasonsAreRemovedInTheirOwnOrder)
{
  EXPECT_TEXT(cleaned("com.velmo-error0013,com.velmo-error0009"),
              run_with("STATE: -com.velmo-error0013\nSTATE: -com.velmo-error0009\n"));
}

TEST(StaleReasonCleanup, ARepeatedReasonIsRemovedAgain)
{
  EXPECT_TEXT(cleaned("a,a"), run_with("STATE: -a\nSTATE: -a\n"));
}

TEST(StaleReasonCleanup, BlanksStayPartOfTheReason)
{
  EXPECT_TEXT(cleaned("com.velmo-error0001, com.velmo-error0002"),
              run_with("STATE: -com.velmo-error0001\nSTATE: - com.velmo-error0002\n"));
  EXPECT_TEXT(cleaned(" "), run_with("STATE: - \n"));
  EXPECT_TEXT(cleaned(", ,\t,"), run_with("STATE: - \nSTATE: -\t\n"));
}

TEST(StaleReasonCleanup, CommasAloneSeparateAndGiveNoEmptyReason)
{
  EXPECT_TEXT(cleaned(",,com.velmo-error0001,,com.velmo-error0002,"),
              run_with("STATE: -com.velmo-error0001\nSTATE: -com.velmo-error0002\n"));
  EXPECT_TEXT(cleaned("a;b c,d;e f"), run_with("STATE: -a;b c\nSTATE: -d;e f\n"));
}

TEST(StaleReasonCleanup, AReasonIsNotTakenForAFormat)
{
  EXPECT_TEXT(cleaned("%s%n,100%"), run_with("STATE: -%s%n\nSTATE: -100%\n"));
}

TEST(StaleReasonCleanup, ManyLongReasonsAreAllRemoved)
{
  std::string value;
  std::string expected;
  for (int i = 0; i < 200; i++) {
    std::string const reason = std::string(60, 'r') + std::to_string(i);
    value += reason + ",";
    expected += "STATE: -" + reason + "\n";
  }
  EXPECT_TEXT(cleaned(value), run_with(expected));
}

TEST(StaleReasonCleanup, OneVeryLongReasonIsRemovedWhole)
{
  std::string const reason(5000, 'r');
  EXPECT_TEXT(cleaned(reason), run_with("STATE: -" + reason + "\n"));
}

TEST(StaleReasonCleanup, AValueWithoutAReasonStillGivesOneLine)
{
  EXPECT_TEXT(cleaned(""), run_with("STATE: -(null)\n"));
  EXPECT_TEXT(cleaned(","), run_with("STATE: -(null)\n"));
  EXPECT_TEXT(cleaned(",,,,"), run_with("STATE: -(null)\n"));
}

TEST(StaleReasonCleanup, WithoutTheOptionNothingIsRemoved)
{
  EXPECT_TEXT(cleaned(FakeDestinations({{"mine", true, {{"copies", "1"}}}})), run_with(""));
  EXPECT_TEXT(cleaned(FakeDestinations({{"mine", true, {}}})), run_with(""));
}

TEST(StaleReasonCleanup, WithoutMemoryForTheCopyNothingIsRemoved)
{
  FakeDestinations destinations({{"mine", true, {{OPTION, "com.velmo-error0013"}}}});
  destinations.strdup_fails = true;
  EXPECT_TEXT(cleaned(destinations), run_with(""));
}

TEST(StaleReasonCleanup, WithoutADefaultDestinationThatIsSaid)
{
  EXPECT_TEXT(cleaned(FakeDestinations({{"mine", false, {{OPTION, "com.velmo-error0013"}}}})),
              RUN_WITHOUT_DEFAULT);
}

TEST(StaleReasonCleanup, WithoutAnyDestinationThatIsSaid)
{
  EXPECT_TEXT(cleaned(FakeDestinations({})), RUN_WITHOUT_DEFAULT);
}

TEST(StaleReasonCleanup, EveryRunAsksAnew)
{
  FakeDestinations destinations({{"mine", true, {{OPTION, "a,b"}}}});
  EXPECT_TEXT(cleaned(destinations), run_with("STATE: -a\nSTATE: -b\n"));
  destinations.destinations[0].options[0].second = "c";
  EXPECT_TEXT(cleaned(destinations), run_with("STATE: -c\n"));
  destinations.destinations.clear();
  EXPECT_TEXT(cleaned(destinations), RUN_WITHOUT_DEFAULT);
}

TEST(StaleReasonCleanup, EachLineIsOneWrite)
{
  FakeDestinations const destinations({{"mine", true, {{OPTION, "a,b,,c"}}}});
  FakeWorld world;
  StderrWrites capture;
  clean_printer_state();
  std::vector<std::string> const writes = capture.take();
  EXPECT_EQ(writes.size(), 5u);
  EXPECT_TRUE(each_is_one_line(writes));
}

}  // namespace
