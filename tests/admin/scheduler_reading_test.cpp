// What we read in a PPD file is what libcups, and with it the scheduler, reads there.
#include <cups/ppd.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>

#include "admin/ppd_records.h"

#pragma GCC diagnostic ignored "-Wdeprecated-declarations"

namespace {

constexpr char const* HEAD = "*PPD-Adobe: \"4.3\"\n";

ppd_file_t* read_by_libcups(std::string const& ppd)
{
  std::FILE* const file = std::tmpfile();
  std::fwrite(ppd.data(), 1, ppd.size(), file);
  std::rewind(file);
  ppd_file_t* const read = ppdOpen(file);
  std::fclose(file);
  return read;
}

std::vector<std::string> values_by_libcups(std::string const& ppd, char const* keyword)
{
  std::vector<std::string> values;
  ppd_file_t* const file = read_by_libcups(ppd);
  EXPECT_TRUE(file) << "libcups cannot read " << ppd;
  if (!file) return values;
  for (auto* it = ppdFindAttr(file, keyword, nullptr); it;
       it = ppdFindNextAttr(file, keyword, nullptr))
    values.emplace_back(it->value);
  ppdClose(file);
  return values;
}

std::vector<std::string> values_by_us(std::string const& ppd, char const* keyword)
{
  std::vector<std::string> values;
  PpdRecords const file = read_ppd_records(ppd);
  for (PpdRecord const& record : file.records)
    if (record.has_value && same_keyword(record.keyword, keyword)) values.push_back(record.value);
  return values;
}

class SchedulerReading : public testing::TestWithParam<char const*> {};

}  // namespace

TEST_P(SchedulerReading, FindsTheSameCommands)
{
  std::string const ppd = std::string(HEAD) + GetParam();
  EXPECT_EQ(values_by_us(ppd, "cupsCommands"), values_by_libcups(ppd, "cupsCommands"));
}

INSTANTIATE_TEST_SUITE_P(
    Shapes, SchedulerReading,
    testing::Values("*cupsCommands: \"A\"\n", "*CUPSCOMMANDS: \"A\"\n", "*cupsCommands: A B \n",
                    "*cupsCommands: \"A\nB\"\n*cupsCommands: C\n", "*cupsCommands: \"A\r\nB\"\r\n",
                    "*cupsCommands: \"A\rB\"\r", "*cupsCommands : \"A\"\n",
                    "*cupsCommands x/y: \"A\"\n", "*cupsCommands x: \"A\"\n",
                    "*cupsCommands\n*A: 1\n", "*cupsCommands:\n", "*cupsCommands: \"\"\n",
                    "*% x: \"\n*cupsCommands: A\n", "*A: \"x\n*cupsCommands: \"B\"\n",
                    "*cupsCommands: A\"\n", "*cupsCommands: A\"B\"\n", "*cupsCommands: \" A \"\n",
                    "*cupsCommands: \"A\"\x1a\n", "\x1a*cupsCommands: A\n",
                    "*% velmoctl replaced *cupsCommands: A\n*cupsCommands: B",
                    "*cupsCommands: A\n*%APLWORKSET STARTX\n*cupsCommands: B\n",
                    "*OpenUI *X/Y: PickOne\n*cupsCommands: A\n*CloseUI: *X\n",
                    "*End\n*cupsCommands: A\n", "\n \n\t\n*cupsCommands: A\n",
                    "*en.cupsCommands: A\n"));
