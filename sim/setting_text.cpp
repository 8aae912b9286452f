// How a person writes the values of the printer's settings.
#include "sim/setting_text.h"

#include <algorithm>
#include <charconv>

namespace sim {

namespace {

constexpr std::string_view BLANKS = " \t\r";
constexpr std::string_view WHOLE = "whole";  // a reply that is not cut

template <typename Number>
bool parse_number(std::string_view text, int base, Number& value)
{
  auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, base);
  return error == std::errc() && end == text.data() + text.size();
}

}  // namespace

std::string_view trim(std::string_view text)
{
  auto const first = text.find_first_not_of(BLANKS);
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(BLANKS) - first + 1);
}

std::string_view take_until(std::string_view& rest, std::string_view separators)
{
  auto const end = std::min(rest.find_first_of(separators), rest.size());
  auto const taken = rest.substr(0, end);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return taken;
}

bool parse_text(std::string_view text, std::span<std::uint8_t> value)
{
  std::vector<std::uint8_t> bytes;
  for (auto rest = trim(text); !rest.empty(); rest = trim(rest)) {
    auto const digits = take_until(rest, BLANKS);
    std::uint8_t byte = 0;
    if (digits.size() != 2 || !parse_number(digits, 16, byte)) return false;
    bytes.push_back(byte);
  }
  if (bytes.size() != value.size()) return false;
  std::ranges::copy(bytes, value.begin());
  return true;
}

bool parse_text(std::string_view text, std::uint8_t& value)
{
  return parse_text(text, std::span(&value, 1));
}

bool parse_text(std::string_view text, std::uint16_t& value)
{
  std::uint16_t number = 0;
  if (!parse_number(trim(text), 10, number)) return false;
  value = number;
  return true;
}

bool parse_text(std::string_view text, std::vector<std::uint16_t>& value)
{
  std::vector<std::uint16_t> sizes;
  if (trim(text) != WHOLE) {
    auto rest = text;
    // A comma at the end is one size too few, hence the size after every comma.
    for (bool more = true; more;) {
      more = rest.find(',') != std::string_view::npos;
      std::uint16_t size = 0;
      if (!parse_text(take_until(rest, ","), size) || size == 0) return false;
      sizes.push_back(size);
    }
  }
  value = sizes;
  return true;
}

bool parse_text(std::string_view text, bool& value)
{
  auto const word = trim(text);
  if (word != "on" && word != "off") return false;
  value = word == "on";
  return true;
}

std::string to_text(std::span<std::uint8_t const> value)
{
  std::string text;
  for (auto const byte : value) {
    if (!text.empty()) text += ' ';
    text += "0123456789abcdef"[byte >> 4];
    text += "0123456789abcdef"[byte & 0xf];
  }
  return text;
}

std::string to_text(std::uint8_t value) { return to_text(std::span(&value, 1)); }

std::string to_text(std::uint16_t value) { return std::to_string(value); }

std::string to_text(std::vector<std::uint16_t> const& value)
{
  std::string text;
  for (auto const size : value) text += (text.empty() ? "" : ",") + std::to_string(size);
  return text.empty() ? std::string(WHOLE) : text;
}

std::string to_text(bool value) { return value ? "on" : "off"; }

}  // namespace sim
