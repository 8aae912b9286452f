// The layout of the printer's replies, written down once for all tests.
#include "tests/oracle/replies.h"

namespace {

constexpr char IGNORED = '\xa5';

char low_byte(unsigned number) { return static_cast<char>(static_cast<unsigned char>(number)); }

}  // namespace

std::string StatusReply::bytes(std::size_t length) const
{
  std::string reply(length, IGNORED);
  reply.at(4) = low_byte(memory_state);
  reply.at(5) = low_byte(power_state);
  reply.at(128) = low_byte(mech_state[0]);
  reply.at(129) = low_byte(mech_state[1]);
  reply.at(131) = low_byte(error[0]);
  reply.at(132) = low_byte(error[1]);
  reply.at(133) = low_byte(error[2]);
  reply.at(145) = low_byte(ink_sheet_type);
  reply.at(148) = low_byte(total / 256);
  reply.at(149) = low_byte(total % 256);
  reply.at(150) = low_byte(remaining / 256);
  reply.at(151) = low_byte(remaining % 256);
  return reply;
}

std::string job_status_reply(std::array<unsigned char, 4> status, std::size_t length)
{
  std::string reply(length, IGNORED);
  for (std::size_t i = 0; i < status.size(); i++) reply.at(8 + i) = low_byte(status[i]);
  return reply;
}
