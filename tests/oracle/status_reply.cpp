// Where the printer puts what it says into its reply, written a second time from its manual.
#include "tests/oracle/status_reply.h"

#include <cstdio>

namespace {

void put(std::string& reply, size_t offset, unsigned value)
{
  reply[offset] = static_cast<char>(value);
}

void put_big_endian(std::string& reply, size_t offset, unsigned value)
{
  put(reply, offset, value / 256);
  put(reply, offset + 1, value % 256);
}

}  // namespace

std::string formatted(char const* format, unsigned number)
{
  std::array<char, 32> text;
  snprintf(text.data(), text.size(), format, number);
  return text.data();
}

std::string StatusReply::bytes(size_t length) const
{
  std::string reply;
  for (size_t i = 0; i < length; ++i) put(reply += ' ', i, 1 + static_cast<unsigned>(i % 251));
  put(reply, 4, memory);
  put(reply, 5, power);
  put(reply, 128, mech[0]);
  put(reply, 129, mech[1]);
  put(reply, 131, error[0]);
  put(reply, 132, error[1]);
  put(reply, 133, error[2]);
  put(reply, 145, ink_sheet);
  put_big_endian(reply, 148, total);
  put_big_endian(reply, 150, remaining);
  return reply;
}

std::string StatusReply::info_text(std::string const& error_info) const
{
  return "power_state=" + formatted("0x%02x", power) + " mech_state=["
         + formatted("0x%02x", mech[0]) + "," + formatted("0x%02x", mech[1])
         + "] memory_state=" + formatted("0x%02x", memory) + " error_info=[" + error_info
         + "] levels=[" + levels_text() + "]";
}

std::string StatusReply::levels_text() const
{
  return "ink ribbon " + std::to_string(remaining) + " / " + std::to_string(total)
         + " ink_sheet_type=" + formatted("0x%02x", ink_sheet);
}
