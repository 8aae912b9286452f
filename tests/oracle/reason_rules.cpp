// The rules of the reason report: one reason is added, every other known one removed.
#include "tests/oracle/reason_rules.h"

#include <algorithm>

// clang-format off
std::array<KnownCode, 38> const KNOWN_CODES{{
    {0x000000, 0},  {0x010606, 20}, {0x020202, 6},  {0x030101, 3},  {0x040304, 7},
    {0x050202, 5},  {0x060202, 1},  {0x070303, 8},  {0x080101, 4},  {0x090202, 2},
    {0x0a0505, 10}, {0x0b0507, 11}, {0x0c0f00, 18}, {0x0d0807, 21}, {0x0e0807, 21},
    {0x100808, 22}, {0x200707, 9},  {0x210707, 9},  {0x230707, 9},  {0x260707, 9},
    {0x270707, 9},  {0x280707, 9},  {0x290707, 9},  {0x300907, 12}, {0x310907, 13},
    {0x32090f, 13}, {0x33090f, 13}, {0x340907, 13}, {0x36090f, 13}, {0x37090f, 13},
    {0x3a0a0f, 14}, {0x3b0a0f, 14}, {0x3c0a0f, 14}, {0x3d0a0f, 14}, {0x3e0a0f, 14},
    {0x3f0a0f, 14}, {0x400e0f, 14}, {0xfeed01, 5},
}};
// clang-format on

namespace {

constexpr int UNANSWERED_OR_UNKNOWN = 23;

std::string keyword(int reason)
{
  return "com.velmo-error00" + std::string(reason < 10 ? "0" : "") + std::to_string(reason);
}

std::string state_lines(int current)
{
  std::string text;
  if (current != 0) text += "STATE: +" + keyword(current) + "\n";
  for (int reason = 1; reason <= 23; ++reason) {
    bool const gap = (reason >= 15 && reason <= 17) || reason == 19;
    if (!gap && reason != current) text += "STATE: -" + keyword(reason) + "\n";
  }
  return text;
}

// Composed once: an exhaustive run asks for them millions of times.
std::string const& cached_state_lines(int current)
{
  static auto const all = [] {
    std::array<std::string, 24> lines;
    for (int reason = 0; reason < 24; ++reason)
      lines.at(static_cast<std::size_t>(reason)) = state_lines(reason);
    return lines;
  }();
  return all.at(static_cast<std::size_t>(current));
}

}  // namespace

void append_reason_report(std::string& text, unsigned code)
{
  auto const* const known = std::lower_bound(
      KNOWN_CODES.begin(), KNOWN_CODES.end(), code,
      [](KnownCode const& candidate, unsigned wanted) { return candidate.code < wanted; });
  if (known != KNOWN_CODES.end() && known->code == code) {
    text += cached_state_lines(known->reason);
    return;
  }
  text += "DEBUG: encountered undefined error number (" + code_text(code) + ")\n";
  text += cached_state_lines(UNANSWERED_OR_UNKNOWN);
}

void append_unavailable_reason_report(std::string& text)
{
  text += cached_state_lines(UNANSWERED_OR_UNKNOWN);
}

std::string code_text(unsigned code)
{
  if (code == 0) return "GOOD";
  std::string text = "0x..,0x..,0x..";
  for (unsigned at : {12U, 7U, 2U}) {
    text[at] = "0123456789abcdef"[code / 16 % 16];
    text[at + 1] = "0123456789abcdef"[code % 16];
    code /= 256;
  }
  return text;
}
