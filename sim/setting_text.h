// How a person writes the values of the printer's settings.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

// Each takes the whole text or refuses it with false, and then leaves the value alone.
bool parse_text(std::string_view text, std::span<std::uint8_t> value);      // "06 02 02"
bool parse_text(std::string_view text, std::uint8_t& value);                // "84"
bool parse_text(std::string_view text, std::uint16_t& value);               // "700"
bool parse_text(std::string_view text, std::vector<std::uint16_t>& value);  // "100,92", "whole"
bool parse_text(std::string_view text, bool& value);                        // "on", "off"

std::string to_text(std::span<std::uint8_t const> value);
std::string to_text(std::uint8_t value);
std::string to_text(std::uint16_t value);
std::string to_text(std::vector<std::uint16_t> const& value);
std::string to_text(bool value);

// The text without the blanks at its ends.
std::string_view trim(std::string_view text);
// The text up to the first of these separators; takes it and the separator off `rest`.
std::string_view take_until(std::string_view& rest, std::string_view separators);

}  // namespace sim
