// The form in which a job is told: titles with what belongs to them, each kind of thing once.
#include "admin/story_text.h"

#include <algorithm>
#include <cstdio>

#include "admin/reason_texts.h"

namespace {

constexpr std::size_t MOST_SHOWN = 200;
constexpr std::size_t TITLE_WIDTH = 10;

bool is_order(unsigned char ch) { return ch < ' ' || ch == 0x7f; }

// Whether this is one character, and none that is an order.
bool is_plain(std::string_view character)
{
  auto const first = static_cast<unsigned char>(character[0]);
  if (first < 0x80) return character.size() == 1 && !is_order(first);
  if (!is_utf8(character)) return false;
  // The control characters of ISO 8859 are c2 80 to c2 9f in UTF-8.
  return first != 0xc2 || static_cast<unsigned char>(character[1]) >= 0xa0;
}

// How many bytes at the front may be shown as they are; 0: not even the first.
std::size_t plain_bytes(std::string_view text)
{
  for (std::size_t length = 1; length <= std::min<std::size_t>(4, text.size()); ++length)
    if (is_plain(text.substr(0, length))) return length;
  return 0;
}

}  // namespace

std::string shown(std::string_view text)
{
  std::string result;
  for (std::size_t at = 0; at < text.size();) {
    if (result.size() >= MOST_SHOWN) return result + "...";
    std::size_t const plain = plain_bytes(text.substr(at));
    if (plain == 0) {
      char code[8];
      std::snprintf(code, sizeof code, "\\x%02x", static_cast<unsigned char>(text[at]));
      result += code;
    } else {
      result += text.substr(at, plain);
    }
    at += std::max<std::size_t>(plain, 1);
  }
  return result;
}

void StoryText::add(std::string_view title, std::string const& text, std::string const& below)
{
  auto const from = items.begin() + static_cast<std::ptrdiff_t>(chapter);
  auto const same = std::find_if(from, items.end(), [&](Item const& item) {
    return item.title == title && item.text == text && item.below == below;
  });
  if (same != items.end())
    ++same->times;
  else
    items.push_back({title, text, below, 1});
}

std::string StoryText::text() const
{
  std::string all;
  for (Item const& item : items) {
    all += "  ";
    all += item.title;
    all.append(TITLE_WIDTH - item.title.size(), ' ') += item.text;
    if (item.times > 1) all += ", " + std::to_string(item.times) + " times";
    all += "\n" + item.below;
  }
  return all;
}
