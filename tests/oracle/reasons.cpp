// The rules of the reason report: one reason is added, every other known one removed.
#include "tests/oracle/reasons.h"

#include <algorithm>
#include <array>
#include <vector>

#include "tests/harness/hex.h"

namespace {

// clang-format off
constexpr KnownCode KNOWN_CODES[] = {
    {0x000000, 0}, {0x060202, 1}, {0x090202, 2}, {0x030101, 3}, {0x080101, 4},
    {0x050202, 5}, {0x020202, 6}, {0x040304, 7}, {0x070303, 8}, {0x200707, 9},
    {0x210707, 9}, {0x230707, 9}, {0x260707, 9}, {0x270707, 9}, {0x280707, 9},
    {0x290707, 9}, {0x0a0505, 10}, {0x0b0507, 11}, {0x300907, 12}, {0x37090f, 13},
    {0x310907, 13}, {0x32090f, 13}, {0x33090f, 13}, {0x340907, 13}, {0x36090f, 13},
    {0x3a0a0f, 14}, {0x3b0a0f, 14}, {0x3c0a0f, 14}, {0x3d0a0f, 14}, {0x3e0a0f, 14},
    {0x3f0a0f, 14}, {0x400e0f, 14}, {0x0c0f00, 18}, {0x010606, 20}, {0x0d0807, 21},
    {0x0e0807, 21}, {0x100808, 22}, {0xfeed01, 5},
};
constexpr int KNOWN_REASONS[] = {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 18, 20, 21, 22, 23};
// clang-format on

std::string state_lines(int current)
{
  std::string text;
  if (current != 0) text += "STATE: +" + keyword(current) + "\n";
  for (int reason : KNOWN_REASONS)
    if (reason != current) text += "STATE: -" + keyword(reason) + "\n";
  return text;
}

// Composed once: an exhaustive run asks for them millions of times.
std::string const& cached_state_lines(int current)
{
  static auto const all = [] {
    std::array<std::string, 100> lines;
    for (int reason = 0; reason < 100; ++reason)
      lines.at(static_cast<std::size_t>(reason)) = state_lines(reason);
    return lines;
  }();
  return all.at(static_cast<std::size_t>(current));
}

// For the same reason.
std::vector<KnownCode> const& sorted_codes()
{
  static auto const all = [] {
    std::vector<KnownCode> codes(std::begin(KNOWN_CODES), std::end(KNOWN_CODES));
    std::ranges::stable_sort(codes, {}, &KnownCode::code);
    return codes;
  }();
  return all;
}

}  // namespace

std::span<KnownCode const> known_codes() { return KNOWN_CODES; }

std::span<int const> known_reasons() { return KNOWN_REASONS; }

std::string keyword(int reason)
{
  return (reason < 10 ? "com.velmo-error000" : "com.velmo-error00") + std::to_string(reason);
}

std::string code_text(unsigned code)
{
  if (code == 0) return "GOOD";
  std::string text = "0x";
  append_hex(text, code >> 16);
  append_hex(text += ",0x", code >> 8 & 0xff);
  append_hex(text += ",0x", code & 0xff);
  return text;
}

void append_reason_report(std::string& text, unsigned code)
{
  auto const known = std::ranges::lower_bound(sorted_codes(), code, {}, &KnownCode::code);
  bool const is_known = known != sorted_codes().end() && known->code == code;
  if (!is_known) text += "DEBUG: encountered undefined error number (" + code_text(code) + ")\n";
  text += cached_state_lines(is_known ? known->reason : UNKNOWN_REASON);
}

std::string reasons_text(int current) { return cached_state_lines(current); }

std::string reason_report_text(unsigned code)
{
  std::string text;
  append_reason_report(text, code);
  return text;
}
