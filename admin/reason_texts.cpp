// Texts for the printer's errors, as an administrator writes them: lines of KEYWORD TEXT.
#include "admin/reason_texts.h"

#include <algorithm>
#include <array>

#include "admin/ppd_records.h"
#include "report/printer_state_reasons.h"

namespace {

constexpr std::string_view BLANKS = " \t\r\n";
constexpr std::size_t MOST_BYTES = 80;                // what a PPD's text may have
constexpr std::string_view NOT_IN_A_TEXT = ":\"/<>";  // they end a PPD's text, or stand for others

std::string_view trimmed(std::string_view text)
{
  text.remove_prefix(std::min(text.find_first_not_of(BLANKS), text.size()));
  return text.substr(0, text.find_last_not_of(BLANKS) + 1);
}

bool is_reason_keyword(std::string_view word)
{
  if (word == UNAVAILABLE_REASON) return true;
  for (PrinterStateReason const& row : PRINTER_STATE_REASONS)
    for (char const* reason : row.reasons)
      if (reason && word == reason) return true;
  return false;
}

bool is_control(char ch) { return static_cast<unsigned char>(ch) < ' ' || ch == 0x7f; }

// What is wrong with a line; empty if nothing is.
std::string fault_of(ReasonText const& line, std::vector<ReasonText> const& before)
{
  if (!is_reason_keyword(line.keyword))
    return "the first word is none of the filter's keywords, such as com.velmo-error0001";
  if (std::ranges::any_of(before, [&](auto const& it) { return it.keyword == line.keyword; }))
    return "a second text for " + line.keyword;
  if (line.text.empty()) return "no text behind " + line.keyword;
  if (!is_utf8(line.text)) return "the text is not UTF-8";
  if (line.text.find_first_of(NOT_IN_A_TEXT) != std::string::npos)
    return "a text cannot hold any of : \" / < >";
  if (std::ranges::any_of(line.text, is_control)) return "a text cannot hold a control character";
  if (line.text.size() > MOST_BYTES) return "a text has at most 80 bytes";
  return {};
}

// How many bytes the character has that begins with this one; 0: none begins so.
std::size_t utf8_length(unsigned char first)
{
  if (first < 0x80) return 1;
  if (first < 0xc2) return 0;
  if (first < 0xe0) return 2;
  if (first < 0xf0) return 3;
  return first < 0xf5 ? 4 : 0;
}

// The second byte is narrower behind some first ones: no overlong forms, no surrogates,
// nothing beyond U+10FFFF.
bool is_second_byte(unsigned char first, unsigned char second)
{
  unsigned char const low = first == 0xe0 ? 0xa0 : first == 0xf0 ? 0x90 : 0x80;
  unsigned char const high = first == 0xed ? 0x9f : first == 0xf4 ? 0x8f : 0xbf;
  return second >= low && second <= high;
}

}  // namespace

bool is_utf8(std::string_view bytes)
{
  while (!bytes.empty()) {
    auto const first = static_cast<unsigned char>(bytes[0]);
    std::size_t const length = utf8_length(first);
    if (length == 0 || length > bytes.size()) return false;
    if (length > 1 && !is_second_byte(first, static_cast<unsigned char>(bytes[1]))) return false;
    for (std::size_t i = 2; i < length; ++i)
      if ((static_cast<unsigned char>(bytes[i]) & 0xc0) != 0x80) return false;
    bytes.remove_prefix(length);
  }
  return true;
}

ReasonTexts parse_reason_texts(std::string_view bytes)
{
  ReasonTexts result{};
  std::size_t number = 0;
  for (std::size_t at = 0; at < bytes.size();) {
    std::size_t const end = end_of_line(bytes, at);
    std::string_view const line = trimmed(bytes.substr(at, end - at));
    at = end;
    ++number;
    if (line.empty() || line.starts_with('#')) continue;

    std::size_t const space = std::min(line.find_first_of(" \t"), line.size());
    ReasonText const entry{std::string(line.substr(0, space)),
                           std::string(trimmed(line.substr(space)))};
    if (std::string fault = fault_of(entry, result.texts); !fault.empty())
      return {{}, number, std::move(fault)};
    result.texts.push_back(entry);
  }
  return result;
}
