// The ink ribbon, the printer's one supply: its prints in all, its prints left, its type.
#include "protocol/printer_levels.h"

#include <cstdio>

PrinterLevels::PrinterLevels(Type kind) : type(kind) {}

PrinterLevels PrinterLevels::Unavailable() { return PrinterLevels(Type::Unavailable); }

PrinterLevels PrinterLevels::Fill(unsigned short total_prints, unsigned short remaining_prints,
                                  unsigned char ink_sheet_type)
{
  PrinterLevels levels(Type::Available);
  levels.total_prints = total_prints;
  levels.remaining_prints = remaining_prints;
  levels.ink_sheet_type = ink_sheet_type;
  return levels;
}

bool PrinterLevels::isAvailable() const { return type == Type::Available; }

std::string PrinterLevels::InkSheetTypeName() const
{
  // The inch mark is U+2033, DOUBLE PRIME.
  if (ink_sheet_type == 0x84) return "13x18(5x7\xe2\x80\xb3)";
  if (ink_sheet_type == 0x8f) return "15x20(6x8\xe2\x80\xb3)";

  char name[128];
  std::snprintf(name, sizeof name, "%02x", ink_sheet_type);
  return name;
}

std::string PrinterLevels::to_string() const
{
  if (type == Type::Unavailable) return "UNAVAILABLE";
  if (type != Type::Available) return "UNKNOWN";

  // Kept: what is left comes before the whole, the reverse of the arguments of Fill.
  char text[128];
  std::snprintf(text, sizeof text, "ink ribbon %d / %d ink_sheet_type=0x%02x", remaining_prints,
                total_prints, ink_sheet_type);
  return text;
}
