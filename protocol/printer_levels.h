// The ink ribbon, the printer's one supply: its prints in all, its prints left, its type.
#pragma once

#include <cstdint>
#include <string>

class PrinterLevels {
public:
  enum class Type : std::int32_t {
    Unavailable = 0,  // no levels could be had from the printer
    Available = 1,    // the fields hold what the printer sent
  };

  explicit PrinterLevels(Type kind);

  static PrinterLevels Unavailable();
  // The ribbon as the printer reports it; nothing is checked. Zero counts, 65535 and
  // type 0xff are kept as they are: what they mean is for the supply report to say.
  static PrinterLevels Fill(unsigned short total_prints, unsigned short remaining_prints,
                            unsigned char ink_sheet_type);

  [[nodiscard]] bool isAvailable() const;
  // The print size the ribbon is made for, "13x18(5x7″)" (centimetres, inches in
  // parentheses, UTF-8); a type without a name as two hexadecimal digits. Follows
  // ink_sheet_type alone, also when the levels are unavailable.
  [[nodiscard]] std::string InkSheetTypeName() const;
  // Text for the log: "UNAVAILABLE", or "ink ribbon 120 / 300 ink_sheet_type=0x84".
  [[nodiscard]] std::string to_string() const;

  Type type;
  std::uint16_t total_prints = 0;      // the ribbon's capacity in prints
  std::uint16_t remaining_prints = 0;  // prints left on it
  std::uint8_t ink_sheet_type = 0;     // the printer's code for the loaded ink sheet
};
