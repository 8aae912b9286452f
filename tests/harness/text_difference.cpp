// Where two texts begin to differ.
#include "tests/harness/text_difference.h"

#include <algorithm>

#include "tests/harness/hex.h"

namespace {

constexpr std::size_t BEFORE = 80;  // bytes of the line shown before the difference
constexpr std::size_t BEHIND = 60;

std::string visible(std::string_view bytes)
{
  std::string text;
  for (char byte : bytes) {
    auto const number = static_cast<unsigned char>(byte);
    if (number >= ' ' && number != 0x7f)
      text += byte;
    else
      append_hex(text += "\\x", number);
  }
  return text;
}

// The line that begins at `start`, or what of it stands around `difference`.
std::string shown_line(std::string_view text, std::size_t start, std::size_t difference)
{
  std::size_t const end = std::min(text.find('\n', start), text.size());
  std::size_t const first = difference > start + BEFORE ? difference - BEFORE : start;
  std::size_t const last = std::min(end, difference + BEHIND);
  std::string shown = (first > start ? "..." : "") + visible(text.substr(first, last - first));
  if (last < end) return shown + "...";
  return end < text.size() ? shown : shown + "[end of text]";
}

}  // namespace

std::string text_difference(std::string_view is, std::string_view should_be)
{
  if (is == should_be) return "";
  auto const same = std::mismatch(is.begin(), is.end(), should_be.begin(), should_be.end()).first;
  auto const difference = static_cast<std::size_t>(same - is.begin());
  std::size_t const start = is.substr(0, difference).rfind('\n') + 1;  // 0 in the first line
  auto const line = 1 + std::count(is.begin(), is.begin() + static_cast<long>(start), '\n');
  return "line " + std::to_string(line) + "\n  is        " + shown_line(is, start, difference)
         + "\n  should be " + shown_line(should_be, start, difference) + "\n";
}
