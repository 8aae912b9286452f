// How a PPD file would change, as diff -u shows it.
#include "admin/ppd_diff.h"

#include <algorithm>
#include <span>
#include <utility>
#include <vector>

#include "admin/output.h"
#include "admin/ppd_records.h"

namespace {

constexpr std::size_t CONTEXT = 3;

using Lines = std::vector<std::string>;

struct Marked {
  char mark;  // ' ' of both files, '-' of the old one, '+' of the new one
  std::string line;
};

// The lines as they may be shown: a terminal could not tell their line ends apart.
Lines shown_lines(std::string_view ppd)
{
  Lines lines;
  for (std::size_t at = 0; at < ppd.size();) {
    lines.push_back(printable(line_at(ppd, at)));
    at = end_of_line(ppd, at);
  }
  return lines;
}

using Rest = std::span<std::string const>;

// How many lines of each file stand in front of the next line that both have. What attach and
// detach change is few lines each time, so the nearest one is the right one.
std::pair<std::size_t, std::size_t> lines_to_next_shared(Rest now, Rest then)
{
  for (std::size_t both = 0; both < now.size() + then.size(); ++both)
    for (std::size_t old = 0; old <= both && old < now.size(); ++old)
      if (both - old < then.size() && now[old] == then[both - old]) return {old, both - old};
  return {now.size(), then.size()};
}

std::vector<Marked> compared(Rest now, Rest then)
{
  std::vector<Marked> all;
  while (!now.empty() || !then.empty()) {
    auto const [gone, come] = lines_to_next_shared(now, then);
    for (std::string const& line : now.first(gone)) all.push_back({'-', line});
    for (std::string const& line : then.first(come)) all.push_back({'+', line});
    now = now.subspan(gone);
    then = then.subspan(come);
    if (now.empty()) continue;
    all.push_back({' ', now.front()});
    now = now.subspan(1);
    then = then.subspan(1);
  }
  return all;
}

bool is_change(Marked const& line) { return line.mark != ' '; }

// Where a hunk ends that begins with this change: further ones whose surroundings it would touch
// belong to it.
std::size_t end_of_hunk(std::span<Marked const> all, std::size_t change)
{
  for (std::size_t i = change; i < all.size() && i <= change + 2 * CONTEXT + 1; ++i)
    if (is_change(all[i])) change = i;
  return std::min(change + 1 + CONTEXT, all.size());
}

std::size_t lines_without(std::span<Marked const> all, char mark)
{
  return all.size() - static_cast<std::size_t>(std::ranges::count(all, mark, &Marked::mark));
}

std::string position(std::span<Marked const> before, std::span<Marked const> hunk, char other)
{
  return std::to_string(lines_without(before, other) + 1) + ","
         + std::to_string(lines_without(hunk, other));
}

}  // namespace

std::string ppd_diff(std::string_view queue, std::string_view now, std::string_view then)
{
  std::vector<Marked> const marked = compared(shown_lines(now), shown_lines(then));
  std::span<Marked const> const all = marked;
  std::string text = "--- the PPD file of " + printable(queue) + "\n+++ the same as it would be\n";
  for (std::size_t i = 0; i < all.size(); ++i) {
    if (!is_change(all[i])) continue;
    std::size_t const begin = i - std::min(i, CONTEXT);
    auto const hunk = all.subspan(begin, end_of_hunk(all, i) - begin);
    auto const before = all.first(begin);
    text += "@@ -" + position(before, hunk, '+') + " +" + position(before, hunk, '-') + " @@\n";
    for (Marked const& line : hunk) text += line.mark + line.line + "\n";
    i = begin + hunk.size();
  }
  return text;
}
