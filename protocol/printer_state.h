// The printer's condition: no answer, or a three-byte printer error code.
#pragma once

#include <cstdint>
#include <string>

class PrinterState {
public:
  enum class Type : std::int32_t {
    Unavailable = 0,  // no status could be had from the printer
    Available = 1,    // the state carries a printer error code
  };

  explicit PrinterState(Type kind);
  PrinterState(Type kind, unsigned char const (*bytes)[3]);

  static PrinterState Unavailable();
  // The printer reports no error: code 00 00 00.
  static PrinterState Good();
  // The printer's error code as it was sent, byte 0 first; any three bytes will do.
  static PrinterState Error(unsigned char const (*bytes)[3]);
  // No prints remain on the ink ribbon: code fe ed 01, which no printer sends.
  static PrinterState InternalSupplyLow();

  // Two states are equal when both are unavailable, or both are available with the
  // same code. A state of any other type equals nothing, itself included.
  bool operator==(PrinterState const& other) const;
  bool operator!=(PrinterState const& other) const;

  // An available state equals its own code; an unavailable one equals no code.
  bool operator==(unsigned char const (*bytes)[3]) const;
  bool operator!=(unsigned char const (*bytes)[3]) const;

  // Text for the log: "UNAVAILABLE", "GOOD", or the code as "0x06,0x02,0x02".
  [[nodiscard]] std::string to_string() const;

private:
  Type type;
  unsigned char code[3] = {};
};
