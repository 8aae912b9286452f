// Every way in which a status reply can arrive in one to four pieces.
#include <gtest/gtest.h>

#include <cups/backend.h>
#include <cups/sidechannel.h>

#include <array>
#include <cstring>
#include <span>

#include "protocol/queries.h"
#include "tests/harness/collected_messages.h"

namespace {

constexpr std::size_t REPLY = 192;
constexpr std::size_t ROOM = 512;

// A reply whose bytes differ from their neighbours, so that none can change places.
std::array<char, REPLY> make_reply()
{
  std::array<char, REPLY> reply{};
  for (std::size_t i = 0; i < REPLY; ++i) reply[i] = static_cast<char>(i + 7);
  return reply;
}

std::array<char, REPLY> const reply = make_reply();

// The pieces still to come end at these offsets, the last one at the reply's end.
std::span<std::size_t const> ends;
std::size_t arrived = 0;
bool room_was_right = true;

std::string dump_of(std::string const& label, std::span<char const> bytes)
{
  static constexpr char DIGITS[] = "0123456789abcdef";
  std::string text = "DEBUG: " + label + " size=" + std::to_string(bytes.size()) + "\n";
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    auto const byte = static_cast<unsigned char>(bytes[i]);
    if (i % 16 == 0) text += "DEBUG: " + label + " 00" + DIGITS[i / 16] + "0:";
    text += {' ', DIGITS[byte / 16], DIGITS[byte % 16]};
    if (i % 16 == 15 || i + 1 == bytes.size()) text += "\n";
  }
  return text;
}

std::string const& expected_messages()
{
  static std::string const text = "DEBUG: get_printer_info() START\n"
                                  + dump_of("[CMD]", std::span("\x1bV21", 4))
                                  + dump_of("[STS]", reply) + "DEBUG: get_printer_info() END\n";
  return text;
}

// Bytes 5, 128, 129, 4; 131 to 133; 150 and 151, 148 and 149; 145.
constexpr char RECORD[] =
    "power_state=0x0c mech_state=[0x87,0x88] memory_state=0x0b error_info=[0x8a,0x8b,0x8c] "
    "levels=[ink ribbon 40350 / 39836 ink_sheet_type=0x98]";

bool arrives_whole(std::span<std::size_t const> piece_ends)
{
  ends = piece_ends;
  arrived = 0;
  collected_messages().clear();
  return get_printer_info().to_string() == RECORD && ends.empty() && room_was_right
         && collected_messages() == expected_messages();
}

std::string cut_text(std::span<std::size_t const> piece_ends)
{
  std::string text = "pieces end at";
  for (std::size_t end : piece_ends) text += " " + std::to_string(end);
  return text;
}

TEST(StatusReply, IsTheSameHoweverItIsCutIntoOneToFourReads)
{
  unsigned cuts = 0;
  auto const check = [&cuts](std::initializer_list<std::size_t> list) {
    ++cuts;
    std::span<std::size_t const> const piece_ends(list.begin(), list.size());
    if (!arrives_whole(piece_ends)) FAIL() << cut_text(piece_ends);
  };

  check({REPLY});
  for (std::size_t a = 1; a < REPLY && !HasFatalFailure(); ++a) {
    check({a, REPLY});
    for (std::size_t b = a + 1; b < REPLY && !HasFatalFailure(); ++b) {
      check({a, b, REPLY});
      for (std::size_t c = b + 1; c < REPLY && !HasFatalFailure(); ++c) check({a, b, c, REPLY});
    }
  }
  EXPECT_EQ(cuts, 1161472U);
}

}  // namespace

// The names that --wrap asks for are reserved ones; there is no other way to spell them.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
extern "C" {

std::size_t __real_fwrite(void const* data, std::size_t size, std::size_t count, FILE* stream);
int __real_fflush(FILE* stream);

// The device stream takes everything. Whatever the tests themselves print goes its way.
std::size_t __wrap_fwrite(void const* data, std::size_t size, std::size_t count, FILE* stream)
{
  return ends.empty() ? __real_fwrite(data, size, count, stream) : count;
}

int __wrap_fflush(FILE* stream) { return ends.empty() ? __real_fflush(stream) : 0; }

cups_sc_status_t __wrap_cupsSideChannelDoRequest(cups_sc_command_t /*command*/, char* /*data*/,
                                                 int* length, double /*timeout*/)
{
  *length = 0;
  return CUPS_SC_STATUS_OK;
}

ssize_t __wrap_cupsBackChannelRead(char* buffer, std::size_t room, double /*timeout*/)
{
  room_was_right = room_was_right && room == ROOM - arrived;
  if (ends.empty()) return 0;
  std::size_t const length = ends.front() - arrived;
  std::memcpy(buffer, reply.data() + arrived, length);
  arrived = ends.front();
  ends = ends.subspan(1);
  return static_cast<ssize_t>(length);
}

}  // extern "C"
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
