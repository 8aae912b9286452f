// The form in which a job is told: titles with what belongs to them, each kind of thing once.
#pragma once

#include <string>
#include <string_view>
#include <vector>

// Text of a log as it may be shown: at most 200 bytes, and every byte that a terminal could
// take for an order, or that is no UTF-8, as \x1b.
std::string shown(std::string_view text);

class StoryText {
public:
  // Something under a title, with lines of its own below it. Told already since the last
  // chapter, it is only counted: a printer that sleeps gives the same answer 60 times.
  void add(std::string_view title, std::string const& text, std::string const& below = {});
  // What comes now is told even if it was told before.
  void beginChapter() { chapter = items.size(); }

  [[nodiscard]] bool isEmpty() const { return items.empty(); }
  // There is room for no more.
  [[nodiscard]] bool isFull() const { return items.size() >= MOST_ITEMS; }
  [[nodiscard]] std::string text() const;

private:
  static constexpr std::size_t MOST_ITEMS = 128;

  struct Item {
    std::string_view title;
    std::string text;
    std::string below;
    unsigned long times;
  };

  std::vector<Item> items;
  std::size_t chapter = 0;
};
