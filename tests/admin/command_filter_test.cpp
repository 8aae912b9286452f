#include "admin/command_filter.h"

#include <gtest/gtest.h>

namespace {

constexpr char const* OURS = "*cupsFilter: \"application/vnd.cups-command 0 commandtovelmo\"\n";
constexpr char const* OURS2 =
    "*cupsFilter2: \"application/vnd.cups-command application/octet-stream 0 commandtovelmo\"\n";
constexpr char const* LIST = "*cupsCommands: \"ReportLevels ReportStatus\"\n";

// The line of the filter that gets command jobs; 0: none.
std::size_t winner(std::string const& ppd)
{
  PpdRecords const file = read_ppd_records(ppd);
  PpdRecord const* const filter = command_filter(file.records);
  return filter ? filter->line : 0;
}

std::string problem(std::string const& ppd)
{
  return attachment_problem(read_ppd_records(ppd).records).value_or("none");
}

bool is_ours(std::string const& line)
{
  return names_our_filter(read_ppd_records(line).records.at(0));
}

}  // namespace

TEST(CommandFilter, CupsFilterCountsInExactlyThisSpelling)
{
  EXPECT_EQ(winner("*cupsFilter: \"application/vnd.cups-command 0 a\"\n"), 1u);
  EXPECT_EQ(winner("*CupsFilter: \"application/vnd.cups-command 0 a\"\n"), 0u);
}

TEST(CommandFilter, CupsFilter2CountsInAnyCaseAndHidesCupsFilter)
{
  std::string const other = "*CUPSfilter2: \"application/vnd.cups-raster a/b 0 c\"\n";
  EXPECT_EQ(winner(OURS + other), 0u);
  EXPECT_EQ(winner("*CUPSFILTER2: \"application/vnd.cups-command a/b 0 c\"\n"), 1u);
}

TEST(CommandFilter, AHiddenLineWithoutAValueHidesNothing)
{
  EXPECT_EQ(winner(std::string("*cupsFilter2\n") + OURS), 2u);
}

TEST(CommandFilter, TheTypeCountsInAnyCase)
{
  EXPECT_EQ(winner("*cupsFilter: \"Application/VND.cups-command 0 a\"\n"), 1u);
}

TEST(CommandFilter, TheCheapestWinsAndTheFirstOfEquals)
{
  std::string const dear = "*cupsFilter: \"application/vnd.cups-command 5 dear\"\n";
  std::string const cheap = "*cupsFilter: \"application/vnd.cups-command 1 cheap\"\n";
  EXPECT_EQ(winner(dear + cheap), 2u);
  EXPECT_EQ(winner(cheap + dear), 1u);
  EXPECT_EQ(winner(cheap + cheap), 1u);
  std::string const dear2 = "*cupsFilter2: \"application/vnd.cups-command a/b 5 dear\"\n";
  std::string const cheap2 = "*cupsFilter2: \"application/vnd.cups-command a/b 1 cheap\"\n";
  EXPECT_EQ(winner(dear2 + cheap2), 2u);
}

TEST(CommandFilter, AWildcardTakesCommandJobs)
{
  for (char const* type : {"application/*", "*/*", "*/vnd.cups-command"})
    EXPECT_EQ(winner("*cupsFilter: \"" + std::string(type) + " 0 a\"\n" + OURS), 1u) << type;
  EXPECT_EQ(winner("*cupsFilter: \"image/* 0 a\"\n" + std::string(OURS)), 2u);
  EXPECT_EQ(winner("*cupsFilter: \"application/* 1 a\"\n" + std::string(OURS)), 2u);
  EXPECT_EQ(winner(OURS + std::string("*cupsFilter: \"application/* 0 a\"\n")), 1u);
}

TEST(CommandFilter, ALineThatTheSchedulerCannotReadIsPassedOver)
{
  for (char const* value : {"", "application/vnd.cups-command", "application 0 a",
                            "application/vnd.cups-command x a", "application/vnd.cups-command 0"})
    EXPECT_EQ(winner("*cupsFilter: \"" + std::string(value) + "\"\n" + OURS), 2u) << value;
}

TEST(CommandFilter, OursMayHaveALimitOrAPath)
{
  EXPECT_TRUE(is_ours(OURS));
  EXPECT_TRUE(is_ours(OURS2));
  EXPECT_TRUE(is_ours("*cupsFilter: \"a/b 0 maxsize(10) commandtovelmo\"\n"));
  EXPECT_TRUE(is_ours("*cupsFilter: \"a/b 0 maxsize(10)commandtovelmo\"\n"));
  EXPECT_TRUE(is_ours("*cupsFilter: \"a/b 0 /usr/lib/cups/filter/commandtovelmo\"\n"));
  EXPECT_FALSE(is_ours("*cupsFilter: \"a/b 0 commandtovelmo2\"\n"));
  EXPECT_FALSE(is_ours("*cupsFilter: \"a/b 0 notcommandtovelmo\"\n"));
  EXPECT_FALSE(is_ours("*cupsFilter: \"a/b 0 maxsize(10 commandtovelmo\"\n"));
  EXPECT_FALSE(is_ours("*cupsFilter: \"a/b 0 other) commandtovelmo\"\n"));
  EXPECT_FALSE(is_ours("*cupsFilter: \"commandtovelmo\"\n"));
}

TEST(CommandFilter, APartThatIsLongerThanTheSchedulersRoomIsCut)
{
  auto const is_ours_with = [](std::size_t super, std::size_t type, std::size_t path) {
    std::string const types = std::string(super, 's') + "/" + std::string(type, 't') + " ";
    std::string const end = "0 " + std::string(path, '/') + "commandtovelmo\"\n";
    bool const is_one = is_ours("*cupsFilter: \"" + types + end);
    EXPECT_EQ(is_ours("*cupsFilter2: \"" + types + types + end), is_one);
    EXPECT_EQ(is_ours("*cupsFilter2: \"a/b " + types + end), is_one);
    return is_one;
  };
  std::size_t const longest_path = 1023 - FILTER_NAME.size();
  EXPECT_TRUE(is_ours_with(15, 255, longest_path));
  EXPECT_FALSE(is_ours_with(16, 255, longest_path));
  EXPECT_FALSE(is_ours_with(15, 256, longest_path));
  EXPECT_FALSE(is_ours_with(15, 255, longest_path + 1));
}

TEST(CommandFilter, OnlyTheFirstListOfCommandsCounts)
{
  EXPECT_EQ(problem(OURS + std::string("*cupsCommands: \"Clean\"\n") + LIST),
            "line 2 lists other commands");
  EXPECT_EQ(problem(OURS + std::string(LIST) + "*cupsCommands: \"Clean\"\n"), "none");
  EXPECT_EQ(problem(OURS + std::string("*cupscommands: \"\"\n") + LIST),
            "line 2 lists other commands");
}

TEST(CommandFilter, TheCommandsAreExactlyOurs)
{
  EXPECT_TRUE(lists_our_commands(" ReportLevels\t ReportStatus \n"));
  for (char const* other : {"", "none", "ReportLevels", "ReportStatus ReportLevels",
                            "ReportLevels ReportStatus Clean", "reportlevels ReportStatus"})
    EXPECT_FALSE(lists_our_commands(other)) << other;
}

TEST(CommandFilter, AnAttachedFileHasNoProblem)
{
  EXPECT_EQ(problem(OURS + std::string(LIST)), "none");
  EXPECT_EQ(problem(OURS2 + std::string(LIST)), "none");
}

TEST(CommandFilter, OnlyALineWithOurTypeInFullOffersCommands)
{
  std::string const others =
      "*cupsFilter: \"broken\"\n*cupsFilter: \"application/vnd.cups-raster 0 r\"\n";
  EXPECT_EQ(problem(others + OURS + LIST), "none");
  for (char const* type : {"application/*", "*/vnd.cups-command"})
    EXPECT_EQ(problem(others + "*cupsFilter: \"" + type + " 0 commandtovelmo\"\n" + LIST),
              "the filter is named for a wildcard only, so no commands are offered");
}

TEST(CommandFilter, EveryProblemIsNamed)
{
  EXPECT_EQ(problem(LIST), "no filter takes command jobs");
  EXPECT_EQ(problem("*cupsFilter: \"*/* 0 x\"\n" + std::string(OURS) + LIST),
            "line 1 names another command filter, which wins");
  EXPECT_EQ(problem(OURS), "no line lists the commands");
  EXPECT_EQ(problem("*cupsFilter: \"*/* 0 commandtovelmo\"\n" + std::string(LIST)),
            "the filter is named for a wildcard only, so no commands are offered");
}
