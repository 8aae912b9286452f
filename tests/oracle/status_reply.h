// The printer's status reply as a test wants it, and what the log says of it.
#pragma once

#include <array>
#include <cstddef>
#include <string>

struct StatusReply {
  unsigned power = 0;
  std::array<unsigned, 2> mech{0, 0};
  unsigned memory = 0;
  std::array<unsigned, 3> error{0, 0, 0};
  unsigned total = 300;
  unsigned remaining = 120;
  unsigned ink_sheet = 0x84;

  // The bytes that the printer does not explain are all different from their neighbours and
  // from zero.
  [[nodiscard]] std::string bytes(size_t length = 192) const;

  // Between the brackets of the "printer_info" line. `error_info` is the derived state's text.
  [[nodiscard]] std::string info_text(std::string const& error_info = "GOOD") const;

  // "ink ribbon ...", as it stands in that line and in the "[ReportLevels]" line.
  [[nodiscard]] std::string levels_text() const;
};

// `format` takes one number.
std::string formatted(char const* format, unsigned number);
