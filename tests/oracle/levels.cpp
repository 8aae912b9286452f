// The rules of the level report: six lines, with blanks for what is not known.
#include "tests/oracle/levels.h"

#include "tests/harness/hex.h"

namespace {

// Whether the counts give a percentage at all.
bool has_level(Ribbon const& ribbon)
{
  return ribbon.total != 0 && ribbon.total != 65535 && ribbon.remaining != 65535;
}

}  // namespace

void append_ribbon_text(std::string& text, Ribbon const& ribbon)
{
  text += "ink ribbon ";
  text += std::to_string(ribbon.remaining);
  text += " / ";
  text += std::to_string(ribbon.total);
  text += " ink_sheet_type=0x";
  append_hex(text, ribbon.ink_sheet);
}

void append_ink_sheet_name(std::string& text, unsigned ink_sheet)
{
  if (ink_sheet == 0x84)
    text += "13x18(5x7″)";
  else if (ink_sheet == 0x8f)
    text += "15x20(6x8″)";
  else
    append_hex(text, ink_sheet);
}

unsigned level_of(Ribbon const& ribbon)
{
  // Exact: a double has more than enough digits for 65535 * 100 / 65534.
  return has_level(ribbon) ? static_cast<unsigned>(ribbon.remaining * 100.0 / ribbon.total) : 0;
}

void append_level_report(std::string& text, Ribbon const& ribbon, unsigned level)
{
  text += "DEBUG: [ReportLevels] ";
  append_ribbon_text(text, ribbon);
  text += "\nATTR: marker-colors=#00FF00\nATTR: marker-levels=";
  if (has_level(ribbon)) {
    text += std::to_string(level);
    text += "\nATTR: marker-message=\"Prints Remaining = ";
    text += std::to_string(ribbon.remaining);
    text += " / ";
    text += std::to_string(ribbon.total);
  } else {
    text += "-1\nATTR: marker-message=\" ";
  }
  text += "\"\nATTR: marker-names=\"";
  if (ribbon.ink_sheet == 255) {
    text += " ";
  } else {
    text += "Ribbon Type: ";
    append_ink_sheet_name(text, ribbon.ink_sheet);
  }
  text += "\"\nATTR: marker-types=ink-ribbon\n";
}

std::string level_report_text(Ribbon const& ribbon, unsigned level)
{
  std::string text;
  append_level_report(text, ribbon, level);
  return text;
}

std::string unavailable_levels_text()
{
  return "DEBUG: [ReportLevels] UNAVAILABLE\n"
         "ATTR: marker-colors=#00FF00\n"
         "ATTR: marker-levels=-2\n"
         "ATTR: marker-message=\" \"\n"
         "ATTR: marker-names=\"Ribbon Type: 00\"\n"
         "ATTR: marker-types=ink-ribbon\n";
}
