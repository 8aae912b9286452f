// A Markdown table that reads well on a terminal too.
#include "bench/table.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace {

// Columns on the screen, not bytes: a byte that continues a character takes none.
size_t width(std::string const& text)
{
  return static_cast<size_t>(
      std::count_if(text.begin(), text.end(), [](char c) { return (c & 0xc0) != 0x80; }));
}

std::string line(std::vector<std::string> const& cells, std::vector<size_t> const& widths)
{
  std::string text = "|";
  for (size_t i = 0; i < cells.size(); ++i)
    text += " " + cells[i] + std::string(widths[i] - width(cells[i]), ' ') + " |";
  return text + "\n";
}

}  // namespace

Table::Table(std::vector<std::string> heads) : rows_{std::move(heads)} {}

void Table::add(std::vector<std::string> const& cells) { rows_.push_back(cells); }

std::string Table::text() const
{
  std::vector<size_t> widths(rows_.front().size(), 3);
  for (auto const& row : rows_)
    for (size_t i = 0; i < row.size(); ++i) widths[i] = std::max(widths[i], width(row[i]));

  std::vector<std::string> rule;
  for (size_t const wide : widths) rule.emplace_back(wide, '-');
  std::string text = line(rows_.front(), widths) + line(rule, widths);
  for (size_t i = 1; i < rows_.size(); ++i) text += line(rows_[i], widths);
  return text;
}

std::string number(double value, int decimals)
{
  std::array<char, 64> buffer;
  std::snprintf(buffer.data(), buffer.size(), "%.*f", decimals, value);
  std::string text = buffer.data();
  size_t const point = std::min(text.find('.'), text.size());
  size_t const first = text[0] == '-' ? 1 : 0;
  for (size_t at = point; at > first + 3; at -= 3) text.insert(at - 3, ",");
  return text;
}
