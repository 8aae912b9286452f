// The printer's status reply: fixed layout, offsets from its first byte.
#include "protocol/printer_info.h"

#include <cstddef>
#include <cstdio>

namespace {

// Where the reply holds each field; the bytes between them are not interpreted.
constexpr std::size_t MEMORY_STATE = 4;
constexpr std::size_t POWER_STATE = 5;
constexpr std::size_t MECH_STATE = 128;  // 2 bytes
constexpr std::size_t ERROR_INFO = 131;  // 3 bytes
constexpr std::size_t INK_SHEET_TYPE = 145;
constexpr std::size_t TOTAL_PRINTS = 148;      // 2 bytes, most significant first
constexpr std::size_t REMAINING_PRINTS = 150;  // 2 bytes, most significant first

constexpr std::uint8_t POWER_AWAKE = 0x00;
constexpr std::uint8_t MECH_GOOD[] = {0x00, 0x20};
constexpr std::uint8_t MEMORY_FULL = 0xff;

// The reply arrives as plain characters, which may be signed.
std::uint8_t byte(char const* at) { return static_cast<std::uint8_t>(*at); }

std::uint16_t be16(char const* at)
{
  return static_cast<std::uint16_t>(byte(at) << 8 | byte(at + 1));
}

}  // namespace

PrinterInfo::PrinterInfo(Type kind) : type(kind) {}

PrinterInfo PrinterInfo::Unavailable() { return PrinterInfo(Type::Unavailable); }

PrinterInfo PrinterInfo::Parse(char const* reply)
{
  PrinterInfo info(Type::Available);
  info.power_state = byte(reply + POWER_STATE);
  info.mech_state[0] = byte(reply + MECH_STATE);
  info.mech_state[1] = byte(reply + MECH_STATE + 1);
  info.memory_state = byte(reply + MEMORY_STATE);
  info.error_info[0] = byte(reply + ERROR_INFO);
  info.error_info[1] = byte(reply + ERROR_INFO + 1);
  info.error_info[2] = byte(reply + ERROR_INFO + 2);
  info.total_prints = be16(reply + TOTAL_PRINTS);
  info.remaining_prints = be16(reply + REMAINING_PRINTS);
  info.ink_sheet_type = byte(reply + INK_SHEET_TYPE);
  return info;
}

bool PrinterInfo::isAvailable() const { return type == Type::Available; }

// Kept: the three tests of a reply's bytes, and the two derivations, turn away only
// Type::Unavailable, while isAvailable asks for Type::Available.

bool PrinterInfo::isWakeUp() const
{
  return type != Type::Unavailable && power_state == POWER_AWAKE;
}

bool PrinterInfo::isMechGood() const
{
  return type != Type::Unavailable
         && (mech_state[0] == MECH_GOOD[0] || mech_state[0] == MECH_GOOD[1]) && mech_state[1] == 0;
}

bool PrinterInfo::isMemoryFree() const
{
  return type != Type::Unavailable && memory_state != MEMORY_FULL;
}

PrinterState PrinterInfo::GetPrinterState() const
{
  if (type == Type::Unavailable) return PrinterState::Unavailable();
  // Kept: the exhausted ribbon hides any error code of the same reply.
  if (remaining_prints < 1) return PrinterState::InternalSupplyLow();
  return PrinterState::Error(&error_info);
}

PrinterLevels PrinterInfo::GetPrinterLevels() const
{
  if (type == Type::Unavailable) return PrinterLevels::Unavailable();
  return PrinterLevels::Fill(total_prints, remaining_prints, ink_sheet_type);
}

std::string PrinterInfo::to_string() const
{
  if (type == Type::Unavailable) return "UNAVAILABLE";
  if (type != Type::Available) return "UNKNOWN";

  char text[128];
  std::snprintf(text, sizeof text,
                "power_state=0x%02x mech_state=[0x%02x,0x%02x] memory_state=0x%02x", power_state,
                mech_state[0], mech_state[1], memory_state);
  return std::string(text) + " error_info=[" + GetPrinterState().to_string() + "] levels=["
         + GetPrinterLevels().to_string() + "]";
}
