// Every way in which a status reply can arrive in one to four pieces.
#include <gtest/gtest.h>

#include <cups/sidechannel.h>

#include <array>
#include <span>

#include "protocol/queries.h"
#include "tests/harness/outside_calls.h"
#include "tests/harness/text_difference.h"
#include "tests/oracle/run_text.h"

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
std::string messages;

Outcome next_piece(std::size_t room)
{
  room_was_right = room_was_right && room == ROOM - arrived;
  if (ends.empty()) return {};
  std::string_view const piece(reply.data() + arrived, ends.front() - arrived);
  arrived = ends.front();
  ends = ends.subspan(1);
  return {static_cast<long>(piece.size()), piece};
}

std::string expected_messages()
{
  return start_text("get_printer_info") + dump_text("[CMD]", "\033V21")
         + dump_text("[STS]", {reply.data(), reply.size()}) + end_text("get_printer_info");
}

// Bytes 5, 128, 129, 4; 131 to 133; 150 and 151, 148 and 149; 145.
constexpr char RECORD[] =
    "power_state=0x0c mech_state=[0x87,0x88] memory_state=0x0b error_info=[0x8a,0x8b,0x8c] "
    "levels=[ink ribbon 40350 / 39836 ink_sheet_type=0x98]";

// The device stream and the backend take everything.
Outcome meet(Call const& call)
{
  switch (call.kind) {
    case Call::Kind::Message:
      messages += call.text;
      return {};
    case Call::Kind::Write:
      return {static_cast<long>(call.text.size())};
    case Call::Kind::Request:
      return {CUPS_SC_STATUS_OK};
    case Call::Kind::Read:
      return next_piece(static_cast<std::size_t>(call.room));
    default:
      return {};
  }
}

// What is wrong with a reply that comes in these pieces; mostly nothing.
std::string difference(std::span<std::size_t const> piece_ends, std::string const& expected)
{
  ends = piece_ends;
  arrived = 0;
  messages.clear();
  std::string const record = get_printer_info().to_string();
  if (!room_was_right) return "a read is not offered the rest of the room";
  if (!ends.empty()) return "not all is read";
  return record == RECORD ? text_difference(messages, expected) : text_difference(record, RECORD);
}

std::string cut_text(std::span<std::size_t const> piece_ends)
{
  std::string text = "pieces end at";
  for (std::size_t end : piece_ends) text += " " + std::to_string(end);
  return text;
}

TEST(StatusReply, IsTheSameHoweverItIsCutIntoOneToFourReads)
{
  OutsideCalls const calls(meet);
  std::string const expected = expected_messages();
  unsigned cuts = 0;
  auto const check = [&](std::initializer_list<std::size_t> list) {
    ++cuts;
    std::span<std::size_t const> const piece_ends(list.begin(), list.size());
    std::string const wrong = difference(piece_ends, expected);
    if (!wrong.empty()) FAIL() << cut_text(piece_ends) << ", " << wrong;
  };

  check({REPLY});
  for (std::size_t a = 1; a < REPLY && !HasFatalFailure(); ++a) {
    check({a, REPLY});
    for (std::size_t b = a + 1; b < REPLY && !HasFatalFailure(); ++b) {
      check({a, b, REPLY});
      for (std::size_t c = b + 1; c < REPLY && !HasFatalFailure(); ++c) check({a, b, c, REPLY});
    }
  }
  EXPECT_TRUE(HasFatalFailure() || cuts == 1161472U) << cuts;
}

}  // namespace
