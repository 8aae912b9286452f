// Readable listing of a raster page header (version 1, cups/raster.h).
#include "diag/raster_header.h"

#include <cstdio>
#include <span>
#include <string>

#include "diag/enumeration_bits.h"
#include "diag/message.h"

namespace {

// Holds the longest text of a value without a name: "cups_orient_e(-2147483648)".
using NoName = char[27];

// The name of a value, or its number in `no_name` where the table has none.
char const* name_of(int value, std::span<char const* const> names, char const* type,
                    NoName& no_name)
{
  auto const index = static_cast<unsigned>(value);
  if (index < names.size() && names[index]) return names[index];
  std::snprintf(no_name, sizeof no_name, "%s(%d)", type, value);
  return &no_name[0];
}

}  // namespace

char const* to_string(cups_adv_e value)
{
  static constexpr char const* NAMES[] = {
      "CUPS_ADVANCE_NONE", "CUPS_ADVANCE_FILE", "CUPS_ADVANCE_JOB",
      "CUPS_ADVANCE_SET",  "CUPS_ADVANCE_PAGE",
  };
  static NoName no_name;
  return name_of(enumeration_bits(value), NAMES, "cups_adv_e", no_name);
}

char const* to_string(cups_bool_e value)
{
  static constexpr char const* NAMES[] = {
      "CUPS_FALSE",
      "CUPS_TRUE",
  };
  static NoName no_name;
  return name_of(enumeration_bits(value), NAMES, "cups_bool_e", no_name);
}

char const* to_string(cups_cspace_e value)
{
  // clang-format off
  // Two gaps: 21 to 31 have no names, nor has 47.
  static constexpr char const* NAMES[] = {
      "CUPS_CSPACE_W", "CUPS_CSPACE_RGB", "CUPS_CSPACE_RGBA", "CUPS_CSPACE_K",
      "CUPS_CSPACE_CMY", "CUPS_CSPACE_YMC", "CUPS_CSPACE_CMYK", "CUPS_CSPACE_YMCK",
      "CUPS_CSPACE_KCMY", "CUPS_CSPACE_KCMYcm", "CUPS_CSPACE_GMCK", "CUPS_CSPACE_GMCS",
      "CUPS_CSPACE_WHITE", "CUPS_CSPACE_GOLD", "CUPS_CSPACE_SILVER", "CUPS_CSPACE_CIEXYZ",
      "CUPS_CSPACE_CIELab", "CUPS_CSPACE_RGBW", "CUPS_CSPACE_SW", "CUPS_CSPACE_SRGB",
      "CUPS_CSPACE_ADOBERGB",
      nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr, nullptr,
      nullptr, nullptr, nullptr,
      "CUPS_CSPACE_ICC1", "CUPS_CSPACE_ICC2", "CUPS_CSPACE_ICC3", "CUPS_CSPACE_ICC4",
      "CUPS_CSPACE_ICC5", "CUPS_CSPACE_ICC6", "CUPS_CSPACE_ICC7", "CUPS_CSPACE_ICC8",
      "CUPS_CSPACE_ICC9", "CUPS_CSPACE_ICCA", "CUPS_CSPACE_ICCB", "CUPS_CSPACE_ICCC",
      "CUPS_CSPACE_ICCD", "CUPS_CSPACE_ICCE", "CUPS_CSPACE_ICCF",
      nullptr,
      "CUPS_CSPACE_DEVICE1", "CUPS_CSPACE_DEVICE2", "CUPS_CSPACE_DEVICE3",
      "CUPS_CSPACE_DEVICE4", "CUPS_CSPACE_DEVICE5", "CUPS_CSPACE_DEVICE6",
      "CUPS_CSPACE_DEVICE7", "CUPS_CSPACE_DEVICE8", "CUPS_CSPACE_DEVICE9",
      "CUPS_CSPACE_DEVICEA", "CUPS_CSPACE_DEVICEB", "CUPS_CSPACE_DEVICEC",
      "CUPS_CSPACE_DEVICED", "CUPS_CSPACE_DEVICEE", "CUPS_CSPACE_DEVICEF",
  };
  // clang-format on
  static NoName no_name;
  return name_of(enumeration_bits(value), NAMES, "cups_cspace_e", no_name);
}

char const* to_string(cups_cut_e value)
{
  static constexpr char const* NAMES[] = {
      "CUPS_CUT_NONE", "CUPS_CUT_FILE", "CUPS_CUT_JOB", "CUPS_CUT_SET", "CUPS_CUT_PAGE",
  };
  static NoName no_name;
  return name_of(enumeration_bits(value), NAMES, "cups_cut_e", no_name);
}

char const* to_string(cups_edge_e value)
{
  static constexpr char const* NAMES[] = {
      "CUPS_EDGE_TOP",
      "CUPS_EDGE_RIGHT",
      "CUPS_EDGE_BOTTOM",
      "CUPS_EDGE_LEFT",
  };
  static NoName no_name;
  return name_of(enumeration_bits(value), NAMES, "cups_edge_e", no_name);
}

char const* to_string(cups_jog_e value)
{
  static constexpr char const* NAMES[] = {
      "CUPS_JOG_NONE",
      "CUPS_JOG_FILE",
      "CUPS_JOG_JOB",
      "CUPS_JOG_SET",
  };
  static NoName no_name;
  return name_of(enumeration_bits(value), NAMES, "cups_jog_e", no_name);
}

char const* to_string(cups_order_e value)
{
  static constexpr char const* NAMES[] = {
      "CUPS_ORDER_CHUNKED",
      "CUPS_ORDER_BANDED",
      "CUPS_ORDER_PLANAR",
  };
  static NoName no_name;
  return name_of(enumeration_bits(value), NAMES, "cups_order_e", no_name);
}

char const* to_string(cups_orient_e value)
{
  static constexpr char const* NAMES[] = {
      "CUPS_ORIENT_0",
      "CUPS_ORIENT_90",
      "CUPS_ORIENT_180",
      "CUPS_ORIENT_270",
  };
  static NoName no_name;
  return name_of(enumeration_bits(value), NAMES, "cups_orient_e", no_name);
}

namespace {

// A field of the listing: its name, its value, and what the CUPS header says of it.
void write_text(char const* field, std::string_view value, char const* comment)
{
  write_message("__", field, "=", value, "        /* ", comment, " */\n");
}

// Kept: the counts are unsigned and written as signed.
std::string number_text(unsigned value) { return std::to_string(static_cast<int>(value)); }

void write_number(char const* field, unsigned value, char const* comment)
{
  write_text(field, number_text(value), comment);
}

// The first two of `values`.
void write_pair(char const* field, unsigned const* values, char const* comment)
{
  std::string pair = "(";
  pair += number_text(values[0]);
  pair += ',';
  pair += number_text(values[1]);
  pair += ')';
  write_text(field, pair, comment);
}

template <typename Enumeration>
void write_name(char const* field, Enumeration const& value, char const* comment)
{
  write_text(field, to_string(static_cast<Enumeration>(enumeration_bits(value))), comment);
}

void dump_texts(cups_page_header_t const* header)
{
  write_message("Standard Page Device Dictionary String Values\n");
  write_text("MediaClass", header->MediaClass, "MediaClass string");
  write_text("MediaColor", header->MediaColor, "MediaColor string");
  write_text("MediaType", header->MediaType, "MediaType string");
  write_text("OutputType", header->OutputType, "OutputType string");
}

void dump_page_device(cups_page_header_t const* header)
{
  write_message("Standard Page Device Dictionary Integer Values\n");
  write_number("AdvanceDistance", header->AdvanceDistance, "AdvanceDistance value in points");
  write_name("AdvanceMedia", header->AdvanceMedia, "AdvanceMedia value (@link cups_adv_t@)");
  write_name("Collate", header->Collate, "Collated copies value");
  write_name("CutMedia", header->CutMedia, "CutMedia value (@link cups_cut_t@)");
  write_name("Duplex", header->Duplex, "Duplexed (double-sided) value");
  write_pair("HWResolution", header->HWResolution, "Resolution in dots-per-inch");
  // Kept: left and bottom only, though the comment lists all four.
  write_pair("ImagingBoundingBox", header->ImagingBoundingBox,
             "Pixel region that is painted (points, left, bottom, right, top)");
  write_name("InsertSheet", header->InsertSheet, "InsertSheet value");
  write_name("Jog", header->Jog, "Jog value (@link cups_jog_t@)");
  write_name("LeadingEdge", header->LeadingEdge, "LeadingEdge value (@link cups_edge_t@)");
  write_pair("Margins", header->Margins, "Lower-lefthand margins in points");
  write_name("ManualFeed", header->ManualFeed, "ManualFeed value");
  write_number("MediaPosition", header->MediaPosition, "MediaPosition value");
  write_number("MediaWeight", header->MediaWeight, "MediaWeight value in grams/m^2");
  write_name("MirrorPrint", header->MirrorPrint, "MirrorPrint value");
  write_name("NegativePrint", header->NegativePrint, "NegativePrint value");
  write_number("NumCopies", header->NumCopies, "Number of copies to produce");
  write_name("Orientation", header->Orientation, "Orientation value (@link cups_orient_t@)");
  write_name("OutputFaceUp", header->OutputFaceUp, "OutputFaceUp value");
  write_pair("PageSize", header->PageSize, "Width and length of page in points");
  write_name("Separations", header->Separations, "Separations value");
  write_name("TraySwitch", header->TraySwitch, "TraySwitch value");
  write_name("Tumble", header->Tumble, "Tumble value");
}

void dump_cups(cups_page_header_t const* header)
{
  write_message("CUPS Page Device Dictionary Values\n");
  write_number("cupsWidth", header->cupsWidth, "Width of page image in pixels");
  write_number("cupsHeight", header->cupsHeight, "Height of page image in pixels");
  write_number("cupsMediaType", header->cupsMediaType, "Media type code");
  write_number("cupsBitsPerColor", header->cupsBitsPerColor, "Number of bits for each color");
  write_number("cupsBitsPerPixel", header->cupsBitsPerPixel, "Number of bits for each pixel");
  write_number("cupsBytesPerLine", header->cupsBytesPerLine, "Number of bytes per line");
  write_name("cupsColorOrder", header->cupsColorOrder, "Order of colors");
  write_name("cupsColorSpace", header->cupsColorSpace, "True colorspace");
  write_number("cupsCompression", header->cupsCompression, "Device compression to use");
  write_number("cupsRowCount", header->cupsRowCount, "Rows per band");
  write_number("cupsRowFeed", header->cupsRowFeed, "Feed between bands");
  write_number("cupsRowStep", header->cupsRowStep, "Spacing between lines");
}

}  // namespace

void dump(cups_page_header_t const* header)
{
  write_message("=== cups_page_header_t ===\n");
  dump_texts(header);
  dump_page_device(header);
  dump_cups(header);
}
