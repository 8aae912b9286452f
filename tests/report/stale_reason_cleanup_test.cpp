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

// A run that finds a default destination and removes these of its reasons.
std::string run_with(std::vector<std::string> const& removed)
{
  std::string text =
      "clean_printer_state() START\n"
      "> cupsGetDests()\n"
      "> cupsGetDest(NULL, NULL, the list)\n"
      "> cupsGetOption(printer-state-reasons, the default's options)\n";
  for (std::string const& reason : removed) text += "STATE: -" + reason + "\n";
  return text +
         "> cupsFreeDests(the list)\n"
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

TEST(StaleReasonCleanup, EveryReasonIsRemovedAsItStands)
{
  struct {
    char const* rule;
    char const* reasons;
    std::vector<std::string> removed;
  } const rows[] = {
      {"one reason", "com.velmo-error0013", {"com.velmo-error0013"}},
      {"the keyword for none", "none", {"none"}},
      {"the scheduler's own", "paused", {"paused"}},
      {"any vocabulary", "media-jam,cups-warning", {"media-jam", "cups-warning"}},
      {"in their own order", "error0013,error0009", {"error0013", "error0009"}},
      {"a repeated reason again", "a,a", {"a", "a"}},
      {"blanks are part of it", "error0001, error0002", {"error0001", " error0002"}},
      {"a blank alone is one", " ", {" "}},
      {"a blank between commas too", ", ,\t,", {" ", "\t"}},
      {"commas give no empty reason", ",,error0001,,error0002,", {"error0001", "error0002"}},
      {"nothing else separates", "a;b c,d;e f", {"a;b c", "d;e f"}},
      {"it is not a format", "%s%n,100%", {"%s%n", "100%"}},
      {"no reason still gives one line", "", {"(null)"}},
      {"a comma alone too", ",", {"(null)"}},
      {"several commas too", ",,,,", {"(null)"}},
  };
  for (auto const& row : rows) EXPECT_TEXT(cleaned(row.reasons), run_with(row.removed)) << row.rule;
}

TEST(StaleReasonCleanup, LongReasonsAreRemovedWholeHoweverMany)
{
  std::vector<std::string> reasons = {std::string(5000, 'r')};
  std::string value = reasons[0];
  for (int i = 0; i < 200; ++i) {
    reasons.push_back(std::string(60, 'r') + std::to_string(i));
    value += "," + reasons.back();
  }
  EXPECT_TEXT(cleaned(value), run_with(reasons));
}

TEST(StaleReasonCleanup, WithoutTheOptionNothingIsRemoved)
{
  EXPECT_TEXT(cleaned(FakeDestinations({{"mine", true, {{"copies", "1"}}}})), run_with({}));
  EXPECT_TEXT(cleaned(FakeDestinations({{"mine", true, {}}})), run_with({}));
}

TEST(StaleReasonCleanup, WithoutMemoryForTheCopyNothingIsRemoved)
{
  FakeDestinations destinations({{"mine", true, {{OPTION, "com.velmo-error0013"}}}});
  destinations.strdup_fails = true;
  EXPECT_TEXT(cleaned(destinations), run_with({}));
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
  EXPECT_TEXT(cleaned(destinations), run_with({"a", "b"}));
  destinations.destinations[0].options[0].second = "c";
  EXPECT_TEXT(cleaned(destinations), run_with({"c"}));
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
