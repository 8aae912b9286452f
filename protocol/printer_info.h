// The printer's status reply, parsed, and what it says about printer and ribbon.
#pragma once

#include <cstdint>
#include <string>

#include "protocol/printer_levels.h"
#include "protocol/printer_state.h"

class PrinterInfo {
public:
  enum class Type : std::int32_t {
    Unavailable = 0,  // no reply could be had
    Available = 1,    // the fields hold a parsed reply
  };

  explicit PrinterInfo(Type kind);

  static PrinterInfo Unavailable();
  // Parses a status reply. Cannot fail: the reply has no length or checksum to test.
  // REQUIRES: at least 152 readable bytes at `reply`.
  static PrinterInfo Parse(char const* reply);

  [[nodiscard]] bool isAvailable() const;
  // The reply says that the printer is awake (power state 00).
  [[nodiscard]] bool isWakeUp() const;
  // The reply says that the mechanism is good (mechanism state 00 00 or 20 00).
  [[nodiscard]] bool isMechGood() const;
  // The reply says that the printer has free memory (memory state other than ff).
  [[nodiscard]] bool isMemoryFree() const;

  // The printer's condition: the exhausted ribbon first, else its error code.
  [[nodiscard]] PrinterState GetPrinterState() const;
  // The ribbon's counts and type as they were sent.
  [[nodiscard]] PrinterLevels GetPrinterLevels() const;

  // Text for the log: "UNAVAILABLE", or every state byte and the two derived values.
  [[nodiscard]] std::string to_string() const;

private:
  Type type;
  std::uint8_t power_state = 0;
  std::uint8_t mech_state[2] = {};
  std::uint8_t memory_state = 0;
  std::uint8_t error_info[3] = {};
  std::uint16_t total_prints = 0;
  std::uint16_t remaining_prints = 0;
  std::uint8_t ink_sheet_type = 0;
};
