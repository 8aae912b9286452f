// The layout of the replies, written a second time from the printer's manual.
#include "tests/oracle/status_reply.h"

#include "tests/harness/hex.h"
#include "tests/oracle/reasons.h"

namespace {

unsigned byte_at(std::string_view reply, std::size_t offset)
{
  return static_cast<unsigned char>(reply[offset]);
}

unsigned big_endian_at(std::string_view reply, std::size_t offset)
{
  return byte_at(reply, offset) * 256 + byte_at(reply, offset + 1);
}

void put(std::string& reply, std::size_t offset, unsigned value)
{
  reply.at(offset) = static_cast<char>(value);
}

void put_big_endian(std::string& reply, std::size_t offset, unsigned value)
{
  put(reply, offset, value / 256);
  put(reply, offset + 1, value % 256);
}

std::string unexplained(std::size_t length)
{
  std::string reply(length, '\0');
  for (std::size_t i = 0; i < length; ++i) put(reply, i, 1 + static_cast<unsigned>(i % 251));
  return reply;
}

}  // namespace

std::string StatusReply::bytes(std::size_t length) const
{
  std::string reply = unexplained(length);
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

StatusReply read_status(std::string_view reply)
{
  return {.power = byte_at(reply, 5),
          .mech = {byte_at(reply, 128), byte_at(reply, 129)},
          .memory = byte_at(reply, 4),
          .error = {byte_at(reply, 131), byte_at(reply, 132), byte_at(reply, 133)},
          .total = big_endian_at(reply, 148),
          .remaining = big_endian_at(reply, 150),
          .ink_sheet = byte_at(reply, 145)};
}

unsigned StatusReply::state_code() const
{
  return remaining == 0 ? EXHAUSTED_RIBBON : error[0] << 16 | error[1] << 8 | error[2];
}

std::string StatusReply::info_text() const
{
  std::string text = "power_state=0x";
  append_hex(text, power);
  append_hex(text += " mech_state=[0x", mech[0]);
  append_hex(text += ",0x", mech[1]);
  append_hex(text += "] memory_state=0x", memory);
  text += " error_info=[" + code_text(state_code()) + "] levels=[";
  append_ribbon_text(text, ribbon());
  return text += "]";
}

std::string job_status_reply(std::array<unsigned, 4> status, std::size_t length)
{
  std::string reply = unexplained(length);
  for (std::size_t i = 0; i < status.size(); ++i) put(reply, 8 + i, status.at(i));
  return reply;
}

std::string job_text(std::string_view reply)
{
  std::string text;
  for (char const* separator : {"0x", ",0x", ",0x", ",0x"}) {
    append_hex(text += separator, byte_at(reply, 8));
    reply.remove_prefix(1);
  }
  return text;
}

bool is_job_ready(std::string_view reply)
{
  unsigned const first = byte_at(reply, 8);
  if (first == 0x50) return byte_at(reply, 9) >= 0x30;
  return first != 0x10 && first != 0x20;
}
