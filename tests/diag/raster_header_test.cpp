// The 43 lines of a raster header's listing.
#include "diag/raster_header.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstring>
#include <string>
#include <vector>

#include "tests/harness/same_text.h"
#include "tests/harness/stderr_capture.h"

namespace {

// A line of the listing: a title, or a field with its comment.
struct Line {
  char const* name;
  char const* comment;  // null for a title
};

constexpr Line LINES[] = {
    {"=== cups_page_header_t ===", nullptr},
    {"Standard Page Device Dictionary String Values", nullptr},
    {"MediaClass", "MediaClass string"},
    {"MediaColor", "MediaColor string"},
    {"MediaType", "MediaType string"},
    {"OutputType", "OutputType string"},
    {"Standard Page Device Dictionary Integer Values", nullptr},
    {"AdvanceDistance", "AdvanceDistance value in points"},
    {"AdvanceMedia", "AdvanceMedia value (@link cups_adv_t@)"},
    {"Collate", "Collated copies value"},
    {"CutMedia", "CutMedia value (@link cups_cut_t@)"},
    {"Duplex", "Duplexed (double-sided) value"},
    {"HWResolution", "Resolution in dots-per-inch"},
    {"ImagingBoundingBox", "Pixel region that is painted (points, left, bottom, right, top)"},
    {"InsertSheet", "InsertSheet value"},
    {"Jog", "Jog value (@link cups_jog_t@)"},
    {"LeadingEdge", "LeadingEdge value (@link cups_edge_t@)"},
    {"Margins", "Lower-lefthand margins in points"},
    {"ManualFeed", "ManualFeed value"},
    {"MediaPosition", "MediaPosition value"},
    {"MediaWeight", "MediaWeight value in grams/m^2"},
    {"MirrorPrint", "MirrorPrint value"},
    {"NegativePrint", "NegativePrint value"},
    {"NumCopies", "Number of copies to produce"},
    {"Orientation", "Orientation value (@link cups_orient_t@)"},
    {"OutputFaceUp", "OutputFaceUp value"},
    {"PageSize", "Width and length of page in points"},
    {"Separations", "Separations value"},
    {"TraySwitch", "TraySwitch value"},
    {"Tumble", "Tumble value"},
    {"CUPS Page Device Dictionary Values", nullptr},
    {"cupsWidth", "Width of page image in pixels"},
    {"cupsHeight", "Height of page image in pixels"},
    {"cupsMediaType", "Media type code"},
    {"cupsBitsPerColor", "Number of bits for each color"},
    {"cupsBitsPerPixel", "Number of bits for each pixel"},
    {"cupsBytesPerLine", "Number of bytes per line"},
    {"cupsColorOrder", "Order of colors"},
    {"cupsColorSpace", "True colorspace"},
    {"cupsCompression", "Device compression to use"},
    {"cupsRowCount", "Rows per band"},
    {"cupsRowFeed", "Feed between bands"},
    {"cupsRowStep", "Spacing between lines"},
};

// The whole listing, with these values in the order of the fields.
std::string listing(std::vector<std::string> const& values)
{
  std::string text;
  auto value = values.begin();
  for (Line const& line : LINES) {
    if (!line.comment) {
      text += std::string(line.name) + "\n";
      continue;
    }
    text += std::string("__") + line.name + "=" + *value + "        /* " + line.comment + " */\n";
    ++value;
  }
  EXPECT_EQ(value, values.end());
  return text;
}

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
  for (; at < sizeof header; at += sizeof first, first++) {
    std::memcpy(bytes + at, &first, sizeof first);
  }
  return header;
}

TEST(RasterHeaderDump, EveryLineShowsItsOwnField)
{
  EXPECT_TEXT(dumped(counting_header(101)),
              listing({"class",
                       "color",
                       "type",
                       "output",
                       "101",                 // AdvanceDistance
                       "cups_adv_e(102)",     // AdvanceMedia
                       "cups_bool_e(103)",    // Collate
                       "cups_cut_e(104)",     // CutMedia
                       "cups_bool_e(105)",    // Duplex
                       "(106,107)",           // HWResolution
                       "(108,109)",           // ImagingBoundingBox, its 110 and 111 not listed
                       "cups_bool_e(112)",    // InsertSheet
                       "cups_jog_e(113)",     // Jog
                       "cups_edge_e(114)",    // LeadingEdge
                       "(115,116)",           // Margins
                       "cups_bool_e(117)",    // ManualFeed
                       "118",                 // MediaPosition
                       "119",                 // MediaWeight
                       "cups_bool_e(120)",    // MirrorPrint
                       "cups_bool_e(121)",    // NegativePrint
                       "122",                 // NumCopies
                       "cups_orient_e(123)",  // Orientation
                       "cups_bool_e(124)",    // OutputFaceUp
                       "(125,126)",           // PageSize
                       "cups_bool_e(127)",    // Separations
                       "cups_bool_e(128)",    // TraySwitch
                       "cups_bool_e(129)",    // Tumble
                       "130",                 // cupsWidth
                       "131",                 // cupsHeight
                       "132",                 // cupsMediaType
                       "133",                 // cupsBitsPerColor
                       "134",                 // cupsBitsPerPixel
                       "135",                 // cupsBytesPerLine
                       "cups_order_e(136)",   // cupsColorOrder
                       "cups_cspace_e(137)",  // cupsColorSpace
                       "138",                 // cupsCompression
                       "139",                 // cupsRowCount
                       "140",                 // cupsRowFeed
                       "141"}));              // cupsRowStep
}

TEST(RasterHeaderDump, NumbersFromTwoToThe31AreWrittenNegative)
{
  EXPECT_TEXT(dumped(counting_header(2147483648u)), listing({"class",
                                                             "color",
                                                             "type",
                                                             "output",
                                                             "-2147483648",
                                                             "cups_adv_e(-2147483647)",
                                                             "cups_bool_e(-2147483646)",
                                                             "cups_cut_e(-2147483645)",
                                                             "cups_bool_e(-2147483644)",
                                                             "(-2147483643,-2147483642)",
                                                             "(-2147483641,-2147483640)",
                                                             "cups_bool_e(-2147483637)",
                                                             "cups_jog_e(-2147483636)",
                                                             "cups_edge_e(-2147483635)",
                                                             "(-2147483634,-2147483633)",
                                                             "cups_bool_e(-2147483632)",
                                                             "-2147483631",
                                                             "-2147483630",
                                                             "cups_bool_e(-2147483629)",
                                                             "cups_bool_e(-2147483628)",
                                                             "-2147483627",
                                                             "cups_orient_e(-2147483626)",
                                                             "cups_bool_e(-2147483625)",
                                                             "(-2147483624,-2147483623)",
                                                             "cups_bool_e(-2147483622)",
                                                             "cups_bool_e(-2147483621)",
                                                             "cups_bool_e(-2147483620)",
                                                             "-2147483619",
                                                             "-2147483618",
                                                             "-2147483617",
                                                             "-2147483616",
                                                             "-2147483615",
                                                             "-2147483614",
                                                             "cups_order_e(-2147483613)",
                                                             "cups_cspace_e(-2147483612)",
                                                             "-2147483611",
                                                             "-2147483610",
                                                             "-2147483609",
                                                             "-2147483608"}));
}

TEST(RasterHeaderDump, AZeroHeaderShowsTheFirstNames)
{
  EXPECT_TEXT(dumped(cups_page_header_t{}), listing({"",
                                                     "",
                                                     "",
                                                     "",
                                                     "0",
                                                     "CUPS_ADVANCE_NONE",
                                                     "CUPS_FALSE",
                                                     "CUPS_CUT_NONE",
                                                     "CUPS_FALSE",
                                                     "(0,0)",
                                                     "(0,0)",
                                                     "CUPS_FALSE",
                                                     "CUPS_JOG_NONE",
                                                     "CUPS_EDGE_TOP",
                                                     "(0,0)",
                                                     "CUPS_FALSE",
                                                     "0",
                                                     "0",
                                                     "CUPS_FALSE",
                                                     "CUPS_FALSE",
                                                     "0",
                                                     "CUPS_ORIENT_0",
                                                     "CUPS_FALSE",
                                                     "(0,0)",
                                                     "CUPS_FALSE",
                                                     "CUPS_FALSE",
                                                     "CUPS_FALSE",
                                                     "0",
                                                     "0",
                                                     "0",
                                                     "0",
                                                     "0",
                                                     "0",
                                                     "CUPS_ORDER_CHUNKED",
                                                     "CUPS_CSPACE_W",
                                                     "0",
                                                     "0",
                                                     "0",
                                                     "0"}));
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
