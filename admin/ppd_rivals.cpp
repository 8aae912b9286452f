// The lines of a PPD file that would win over those of our block.
#include "admin/ppd_rivals.h"

#include <algorithm>

#include "admin/command_filter.h"

std::vector<std::size_t> ppd_rivals(std::vector<PpdRecord> const& plain,
                                    std::vector<std::string> const& block)
{
  std::string text;
  for (std::string const& line : block) text += line + "\n";
  PpdRecords const ours = read_ppd_records(text);
  std::vector<PpdRecord> all = plain;
  all.insert(all.end(), ours.records.begin(), ours.records.end());

  std::vector<std::size_t> rivals;
  auto const set_aside = [&](PpdRecord const& record) {
    auto const place = static_cast<std::size_t>(&record - all.data());
    rivals.push_back(place);
    all[place].has_value = false;
  };
  // Ours at the end are always among them, so the loops end there.
  for (auto const* it = command_filter(all); !names_our_filter(*it); it = command_filter(all))
    set_aside(*it);
  for (auto const* it = command_list(all); !lists_our_commands(it->value); it = command_list(all))
    set_aside(*it);
  for (PpdRecord const& reason : ours.records) {
    if (!is_reason_text(reason)) continue;
    for (std::size_t i = 0; i < plain.size(); ++i)
      if (is_reason_text(plain[i]) && same_keyword(plain[i].option, reason.option))
        set_aside(all[i]);
  }
  std::ranges::sort(rivals);
  return rivals;
}
