#include "admin/server_settings.h"

#include <gtest/gtest.h>

namespace {

using Texts = std::vector<std::string>;

constexpr char const* STOCK =
    "# a comment\nMaxLogSize 0\n<Location />\n  Order allow,deny\n</Location>\n";

}  // namespace

TEST(ServerSettings, WithoutALineCupsHasItsOwnValues)
{
  ServerSettings const settings = read_settings(STOCK).value();
  EXPECT_EQ(settings.max_jobs, 500);
  EXPECT_EQ(settings.filter_limit, 0);
}

TEST(ServerSettings, LinesAreReadAsTheSchedulerReadsThem)
{
  ServerSettings const settings =
      read_settings(
          "#MaxJobs 1\r\n  maxjobs\t7000   # for the hall\r\nFilterLimit 300\nFilterLimit 200")
          .value();
  EXPECT_EQ(settings.max_jobs, 7000);
  EXPECT_EQ(settings.filter_limit, 200);
}

TEST(ServerSettings, WhatIsNoPlainNumberWarnsOfNothing)
{
  for (char const* value : {"", " 1k", " -3", " 0x10", " many", " 99999999999999999999"}) {
    ServerSettings const settings = read_settings(std::string("MaxJobs") + value + "\n").value();
    EXPECT_EQ(settings_advice(settings, 1'000'000), Texts()) << "MaxJobs" << value;
  }
}

TEST(ServerSettings, AServerForWhichTheyAreEnoughIsNotWarned)
{
  EXPECT_EQ(settings_advice({500, 0}, 500), Texts());
  EXPECT_EQ(settings_advice({0, 0}, 1'000'000), Texts());
  EXPECT_EQ(settings_advice({0, 1000}, 10), Texts());
}

TEST(ServerSettings, FewerJobsThanQueuesMayStopAll)
{
  EXPECT_EQ(settings_advice({500, 0}, 501),
            Texts{"MaxJobs 500 is too little for 501 attached queues: when so many jobs wait for "
                  "printers that are off, the scheduler takes none for any queue; set MaxJobs 1002 "
                  "in cupsd.conf"});
}

TEST(ServerSettings, AFilterLimitIsUsedUpByPrintersThatAreOff)
{
  EXPECT_EQ(
      settings_advice({0, 999}, 10),
      Texts{"FilterLimit 999 is too little for 10 attached queues: it limits the jobs that run "
            "at once to 9, and when so many printers are off, all others wait; set FilterLimit "
            "0 in cupsd.conf"});
}

TEST(ServerSettings, EachThatIsTooLittleIsNamed)
{
  EXPECT_EQ(
      settings_advice({1, 1}, 2),
      (Texts{"MaxJobs 1 is too little for 2 attached queues: when so many jobs wait for "
             "printers that are off, the scheduler takes none for any queue; set MaxJobs 4 in "
             "cupsd.conf",
             "FilterLimit 1 is too little for 2 attached queues: it limits the jobs that run "
             "at once to 1, and when so many printers are off, all others wait; set "
             "FilterLimit 0 in cupsd.conf"}));
}
