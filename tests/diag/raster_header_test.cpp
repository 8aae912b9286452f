// The 43 lines of a raster header's listing.
#include "diag/raster_header.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

#include "tests/harness/same_text.h"
#include "tests/harness/stderr_capture.h"
#include "tests/oracle/raster_listing.h"

namespace {

std::string dumped(cups_page_header_t const& header)
{
  StderrCapture capture;
  dump(&header);
  return capture.take();
}

// A header whose fields all differ: the numbers count up from `first` in the order of the
// header, also in those that are not listed.
cups_page_header_t counting_header(unsigned first)
{
  cups_page_header_t header{};
  std::strcpy(header.MediaClass, "class");
  std::strcpy(header.MediaColor, "color");
  std::strcpy(header.MediaType, "type");
  std::strcpy(header.OutputType, "output");
  auto* bytes = reinterpret_cast<unsigned char*>(&header);
  std::size_t at = offsetof(cups_page_header_t, AdvanceDistance);
  for (; at < sizeof header; at += sizeof first, ++first)
    std::memcpy(bytes + at, &first, sizeof first);
  return header;
}

// Numbers from 2^31 on are written negative; zeros show the first names.
TEST(RasterHeaderDump, EveryLineShowsItsOwnField)
{
  for (cups_page_header_t const& header :
       {counting_header(101), counting_header(2147483648u), cups_page_header_t{}})
    EXPECT_TEXT(dumped(header), raster_listing(header)) << header.AdvanceDistance;
}

TEST(RasterHeaderDump, LinesAreExactlyTheseBytes)
{
  cups_page_header_t header{};
  header.AdvanceDistance = 4294967295u;
  header.Collate = CUPS_TRUE;
  header.cupsRowStep = 2147483647u;
  std::string const text = dumped(header);
  std::string const start =
      "=== cups_page_header_t ===\n"
      "Standard Page Device Dictionary String Values\n"
      "__MediaClass=        /* MediaClass string */\n";
  std::string const end = "__cupsRowStep=2147483647        /* Spacing between lines */\n";
  EXPECT_EQ(text.substr(0, start.size()), start);
  EXPECT_NE(text.find("\n__AdvanceDistance=-1        /* AdvanceDistance value in points */\n"
                      "__AdvanceMedia=CUPS_ADVANCE_NONE        "
                      "/* AdvanceMedia value (@link cups_adv_t@) */\n"
                      "__Collate=CUPS_TRUE        /* Collated copies value */\n"),
            std::string::npos);
  ASSERT_GT(text.size(), end.size());
  EXPECT_EQ(text.substr(text.size() - end.size()), end);
}

TEST(RasterHeaderDump, TextsAreWrittenWholeAndAsTheyStand)
{
  cups_page_header_t header{};
  std::memset(header.MediaClass, 'M', 63);
  std::memset(header.MediaColor, '%', 63);
  std::memset(header.MediaType, '\xe9', 63);
  std::memset(header.OutputType, '"', 63);
  std::string const text = dumped(header);
  for (char c : {'M', '%', '\xe9', '"'}) {
    EXPECT_NE(text.find("=" + std::string(63, c) + "        /* "), std::string::npos) << c;
  }
}

TEST(RasterHeaderDump, EachOfThe43LinesIsOneWrite)
{
  cups_page_header_t const header = counting_header(1);
  StderrWrites capture;
  dump(&header);
  std::vector<std::string> const writes = capture.take();
  EXPECT_EQ(writes.size(), 43u);
  EXPECT_TRUE(each_is_one_line(writes));
}

}  // namespace
