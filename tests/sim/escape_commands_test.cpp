// The escape commands, each fed in every way that a network may cut it.
#include "sim/escape_commands.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <ostream>
#include <vector>

#include "tests/sim/reply_bytes.h"

namespace {

using sim::EscapeCommand;
using sim::Heard;
using Packets = std::vector<Bytes>;

struct Case {
  Bytes bytes;
  EscapeCommand command;
};

Case const CASES[] = {
    {{0x1b, 0x45, 0x57, 0x55}, EscapeCommand::WakeUp},
    {{0x1b, 0x56, 0x32, 0x31}, EscapeCommand::StatusQuery},
    {{0x1b, 0x56, 0x31, 0x30, 0x00, 0x00}, EscapeCommand::JobStatusQuery},
};

Heard unknown(std::uint8_t byte) { return {EscapeCommand::Unknown, byte}; }

std::vector<Heard> unknown(Bytes const& bytes)
{
  std::vector<Heard> heard;
  for (auto const byte : bytes) heard.push_back(unknown(byte));
  return heard;
}

// All that is heard of one connection.
std::vector<Heard> hear(Packets const& packets)
{
  sim::EscapeCommandParser parser;
  std::vector<Heard> all;
  for (auto const& packet : packets) {
    auto const heard = parser.feed(packet);
    all.insert(all.end(), heard.begin(), heard.end());
  }
  auto const rest = parser.finish();
  all.insert(all.end(), rest.begin(), rest.end());
  return all;
}

Bytes first(Bytes const& bytes, std::size_t count)
{
  return {bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(count)};
}

Bytes after(Bytes const& bytes, std::size_t count)
{
  return {bytes.begin() + static_cast<std::ptrdiff_t>(count), bytes.end()};
}

}  // namespace

namespace sim {

void PrintTo(Heard const& heard, std::ostream* out)
{
  *out << name(heard.command) << ' ' << int{heard.byte};
}

}  // namespace sim

TEST(EscapeCommandParser, ACommandIsHeardAtItsLastByteAndNotBefore)
{
  for (auto const& [bytes, command] : CASES) {
    sim::EscapeCommandParser parser;
    EXPECT_TRUE(parser.feed(first(bytes, bytes.size() - 1)).empty());
    EXPECT_EQ(parser.feed(after(bytes, bytes.size() - 1)), std::vector<Heard>{{command}});
  }
}

// Bit i of the mask cuts the bytes after byte i.
TEST(EscapeCommandParser, EverySplitOfEveryCommandIsHeardTheSame)
{
  for (auto const& [bytes, command] : CASES) {
    for (unsigned mask = 0; mask < 1u << (bytes.size() - 1); ++mask) {
      Packets packets(1);
      for (std::size_t i = 0; i < bytes.size(); ++i) {
        packets.back().push_back(bytes[i]);
        if (mask >> i & 1) packets.emplace_back();
      }
      EXPECT_EQ(hear(packets), std::vector<Heard>{{command}}) << "cuts " << mask;
    }
  }
}

TEST(EscapeCommandParser, EveryPairOfCommandsIsHeardInEveryTwoPackets)
{
  for (auto const& [left, left_command] : CASES) {
    for (auto const& [right, right_command] : CASES) {
      auto const both = join(left, right);
      std::vector<Heard> const expected{{left_command}, {right_command}};
      for (std::size_t cut = 0; cut <= both.size(); ++cut) {
        EXPECT_EQ(hear({first(both, cut), after(both, cut)}), expected) << "cut at " << cut;
      }
    }
  }
}

TEST(EscapeCommandParser, EveryByteThatBeginsNoCommandIsUnknown)
{
  for (unsigned value = 0; value <= 0xff; ++value) {
    auto const byte = static_cast<std::uint8_t>(value);
    EXPECT_EQ(hear({{byte}}), std::vector<Heard>{unknown(byte)});
  }
}

// A command that is broken off by the start of any command: no byte of the second is lost.
TEST(EscapeCommandParser, ABrokenOffCommandDoesNotHideTheNext)
{
  for (auto const& broken : CASES) {
    for (std::size_t size = 1; size < broken.bytes.size(); ++size) {
      for (auto const& [bytes, command] : CASES) {
        auto const start = first(broken.bytes, size);
        auto expected = unknown(start);
        expected.push_back({command});
        EXPECT_EQ(hear({join(start, bytes)}), expected);
        EXPECT_EQ(hear({start, bytes}), expected);
      }
    }
  }
}

TEST(EscapeCommandParser, BytesOfNoCommandAreUnknownOneByOne)
{
  Heard const wake_up{EscapeCommand::WakeUp};
  Heard const query{EscapeCommand::StatusQuery};
  struct Row {
    char const* what;
    Bytes bytes;
    std::vector<Heard> heard;
  };
  for (auto const& [what, bytes, heard] : std::vector<Row>{
           {"between commands",
            {0x00, 0x1b, 0x45, 0x57, 0x55, 0x41, 0xff, 0x1b, 0x56, 0x32, 0x31, 0x55},
            {unknown(0x00), wake_up, unknown(0x41), unknown(0xff), query, unknown(0x55)}},
           {"a repeated escape character",
            {0x1b, 0x1b, 0x45, 0x57, 0x55},
            {unknown(0x1b), wake_up}},
           {"a command in lower case", {0x1b, 0x65, 0x77, 0x75}, unknown({0x1b, 0x65, 0x77, 0x75})},
           {"a job status query without its second zero",
            {0x1b, 0x56, 0x31, 0x30, 0x00, 0x01},
            unknown({0x1b, 0x56, 0x31, 0x30, 0x00, 0x01})},
           {"no bytes", {}, {}},
       })
    EXPECT_EQ(hear({{}, bytes}), heard) << what;
}

TEST(EscapeCommandParser, ACommandCutOffByTheEndIsUnknownBytes)
{
  for (auto const& [bytes, command] : CASES) {
    for (std::size_t size = 1; size < bytes.size(); ++size) {
      EXPECT_EQ(hear({first(bytes, size)}), unknown(first(bytes, size)));
    }
  }
}

TEST(EscapeCommandParser, TheEndIsToldOnce)
{
  sim::EscapeCommandParser parser;
  EXPECT_TRUE(parser.feed(Bytes{0x1b}).empty());
  EXPECT_EQ(parser.finish(), std::vector<Heard>{unknown(0x1b)});
  EXPECT_TRUE(parser.finish().empty());
}
