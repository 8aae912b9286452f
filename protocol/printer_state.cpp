// The printer's condition: no answer, or a three-byte printer error code.
#include "protocol/printer_state.h"

#include <cstdio>
#include <cstring>

namespace {

constexpr unsigned char GOOD[3] = {0x00, 0x00, 0x00};
constexpr unsigned char INTERNAL_SUPPLY_LOW[3] = {0xfe, 0xed, 0x01};

}  // namespace

PrinterState::PrinterState(Type kind) : type(kind) {}

PrinterState::PrinterState(Type kind, unsigned char const (*bytes)[3]) : type(kind)
{
  std::memcpy(code, *bytes, sizeof code);
}

PrinterState PrinterState::Unavailable() { return PrinterState(Type::Unavailable); }

PrinterState PrinterState::Good() { return {Type::Available, &GOOD}; }

PrinterState PrinterState::Error(unsigned char const (*bytes)[3])
{
  return {Type::Available, bytes};
}

PrinterState PrinterState::InternalSupplyLow() { return {Type::Available, &INTERNAL_SUPPLY_LOW}; }

bool PrinterState::operator==(PrinterState const& other) const
{
  if (type == Type::Available && other.type == Type::Available) return *this == &other.code;
  return type == Type::Unavailable && other.type == Type::Unavailable;
}

bool PrinterState::operator!=(PrinterState const& other) const { return !(*this == other); }

bool PrinterState::operator==(unsigned char const (*bytes)[3]) const
{
  return type == Type::Available && std::memcmp(code, *bytes, sizeof code) == 0;
}

bool PrinterState::operator!=(unsigned char const (*bytes)[3]) const { return !(*this == bytes); }

std::string PrinterState::to_string() const
{
  if (type == Type::Unavailable) return "UNAVAILABLE";
  if (type != Type::Available) return "UNKNOWN";
  if (*this == Good()) return "GOOD";

  char text[32];
  std::snprintf(text, sizeof text, "0x%02x,0x%02x,0x%02x", code[0], code[1], code[2]);
  return text;
}
