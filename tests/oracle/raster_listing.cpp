// One row for each line of the listing: field, what it holds, its place, its comment.
#include "tests/oracle/raster_listing.h"

#include <cstddef>
#include <cstring>

namespace {

struct Line {
  char const* field;
  char const* holds;  // "text", "number", "pair", or the name of an enumeration; "" in a title
  std::size_t offset;
  char const* comment;
};

#define FIELD(name, holds, comment)                           \
  {                                                           \
#name, holds, offsetof(cups_page_header_t, name), comment \
  }

// clang-format off
constexpr Line LINES[] = {
    {"=== cups_page_header_t ===", "", 0, ""},
    {"Standard Page Device Dictionary String Values", "", 0, ""},
    FIELD(MediaClass, "text", "MediaClass string"),
    FIELD(MediaColor, "text", "MediaColor string"),
    FIELD(MediaType, "text", "MediaType string"),
    FIELD(OutputType, "text", "OutputType string"),
    {"Standard Page Device Dictionary Integer Values", "", 0, ""},
    FIELD(AdvanceDistance, "number", "AdvanceDistance value in points"),
    FIELD(AdvanceMedia, "cups_adv_e", "AdvanceMedia value (@link cups_adv_t@)"),
    FIELD(Collate, "cups_bool_e", "Collated copies value"),
    FIELD(CutMedia, "cups_cut_e", "CutMedia value (@link cups_cut_t@)"),
    FIELD(Duplex, "cups_bool_e", "Duplexed (double-sided) value"),
    FIELD(HWResolution, "pair", "Resolution in dots-per-inch"),
    FIELD(ImagingBoundingBox, "pair", "Pixel region that is painted (points, left, bottom, right, top)"),
    FIELD(InsertSheet, "cups_bool_e", "InsertSheet value"),
    FIELD(Jog, "cups_jog_e", "Jog value (@link cups_jog_t@)"),
    FIELD(LeadingEdge, "cups_edge_e", "LeadingEdge value (@link cups_edge_t@)"),
    FIELD(Margins, "pair", "Lower-lefthand margins in points"),
    FIELD(ManualFeed, "cups_bool_e", "ManualFeed value"),
    FIELD(MediaPosition, "number", "MediaPosition value"),
    FIELD(MediaWeight, "number", "MediaWeight value in grams/m^2"),
    FIELD(MirrorPrint, "cups_bool_e", "MirrorPrint value"),
    FIELD(NegativePrint, "cups_bool_e", "NegativePrint value"),
    FIELD(NumCopies, "number", "Number of copies to produce"),
    FIELD(Orientation, "cups_orient_e", "Orientation value (@link cups_orient_t@)"),
    FIELD(OutputFaceUp, "cups_bool_e", "OutputFaceUp value"),
    FIELD(PageSize, "pair", "Width and length of page in points"),
    FIELD(Separations, "cups_bool_e", "Separations value"),
    FIELD(TraySwitch, "cups_bool_e", "TraySwitch value"),
    FIELD(Tumble, "cups_bool_e", "Tumble value"),
    {"CUPS Page Device Dictionary Values", "", 0, ""},
    FIELD(cupsWidth, "number", "Width of page image in pixels"),
    FIELD(cupsHeight, "number", "Height of page image in pixels"),
    FIELD(cupsMediaType, "number", "Media type code"),
    FIELD(cupsBitsPerColor, "number", "Number of bits for each color"),
    FIELD(cupsBitsPerPixel, "number", "Number of bits for each pixel"),
    FIELD(cupsBytesPerLine, "number", "Number of bytes per line"),
    FIELD(cupsColorOrder, "cups_order_e", "Order of colors"),
    FIELD(cupsColorSpace, "cups_cspace_e", "True colorspace"),
    FIELD(cupsCompression, "number", "Device compression to use"),
    FIELD(cupsRowCount, "number", "Rows per band"),
    FIELD(cupsRowFeed, "number", "Feed between bands"),
    FIELD(cupsRowStep, "number", "Spacing between lines"),
};

struct Names {
  char const* type;
  char const* prefix;
  char const* names;  // separated by blanks
};

constexpr Names NAMES[] = {
    {"cups_adv_e", "CUPS_ADVANCE_", "NONE FILE JOB SET PAGE "},
    {"cups_bool_e", "CUPS_", "FALSE TRUE "},
    {"cups_cut_e", "CUPS_CUT_", "NONE FILE JOB SET PAGE "},
    {"cups_edge_e", "CUPS_EDGE_", "TOP RIGHT BOTTOM LEFT "},
    {"cups_jog_e", "CUPS_JOG_", "NONE FILE JOB SET "},
    {"cups_order_e", "CUPS_ORDER_", "CHUNKED BANDED PLANAR "},
    {"cups_orient_e", "CUPS_ORIENT_", "0 90 180 270 "},
    {"cups_cspace_e", "CUPS_CSPACE_",
     "W RGB RGBA K CMY YMC CMYK YMCK KCMY KCMYcm GMCK GMCS WHITE GOLD SILVER CIEXYZ CIELab "
     "RGBW SW SRGB ADOBERGB "},
};
// clang-format on

std::string listed_name(Names const& names, int value)
{
  std::string rest = names.names;
  for (; value > 0 && !rest.empty(); --value) rest.erase(0, rest.find(' ') + 1);
  return value == 0 ? rest.substr(0, rest.find(' ')) : "";
}

std::string value_text(std::string const& holds, char const* place)
{
  if (holds == "text") return place;
  int values[2];
  std::memcpy(values, place, sizeof values[0]);
  if (holds == "number") return std::to_string(values[0]);
  if (holds != "pair") return raster_name(holds, values[0]);
  std::memcpy(values, place, sizeof values);
  return "(" + std::to_string(values[0]) + "," + std::to_string(values[1]) + ")";
}

}  // namespace

std::string raster_name(std::string const& type, int value)
{
  static constexpr char DIGITS[] = "0123456789ABCDEF";
  if (type == "cups_cspace_e" && value >= 32 && value <= 46)
    return std::string("CUPS_CSPACE_ICC") + DIGITS[value - 31];
  if (type == "cups_cspace_e" && value >= 48 && value <= 62)
    return std::string("CUPS_CSPACE_DEVICE") + DIGITS[value - 47];
  for (Names const& names : NAMES) {
    if (names.type != type) continue;
    std::string const name = listed_name(names, value);
    if (!name.empty()) return names.prefix + name;
  }
  return type + "(" + std::to_string(value) + ")";
}

std::string raster_listing(cups_page_header_t const& header)
{
  auto const* const bytes = reinterpret_cast<char const*>(&header);
  std::string text;
  for (Line const& line : LINES) {
    bool const title = *line.holds == '\0';
    if (title)
      text += std::string(line.field) + "\n";
    else
      text += std::string("__") + line.field + "=" + value_text(line.holds, bytes + line.offset)
              + "        /* " + line.comment + " */\n";
  }
  return text;
}
