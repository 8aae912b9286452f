// The fenced block that an attached queue's PPD file has at its end.
#include "admin/ppd_block.h"

#include <algorithm>

namespace {

std::string_view line_of(PpdRecord const& record) { return line_at(record.bytes, 0); }

bool is_replaced(PpdRecord const& record) { return record.bytes.starts_with(REPLACED); }

// Two line ends, of which the second was put in with the block, are told by the block's own.
std::size_t size_of_line_end(PpdRecord const& record)
{
  return record.bytes.size() - line_of(record).size();
}

std::string damage_at(PpdRecord const& record, std::string_view what)
{
  return "line " + std::to_string(record.line) + ": " + std::string(what);
}

}  // namespace

FoundBlock find_block(std::vector<PpdRecord> const& records)
{
  std::optional<std::size_t> begin;
  std::optional<std::size_t> end;
  PpdRecord const* replaced = nullptr;
  for (std::size_t i = 0; i < records.size(); ++i) {
    PpdRecord const& record = records[i];
    if (line_of(record) == BLOCK_BEGIN) {
      if (begin) return {{}, damage_at(record, "a second block of velmoctl begins")};
      begin = i;
    } else if (line_of(record) == BLOCK_END) {
      if (!begin) return {{}, damage_at(record, "a block of velmoctl ends that has no begin")};
      if (end) return {{}, damage_at(record, "a block of velmoctl ends a second time")};
      end = i;
    } else if (is_replaced(record) && !replaced) {
      replaced = &record;
    }
  }
  if (begin && !end)
    return {{}, damage_at(records[*begin], "a block of velmoctl begins that has no end")};
  if (begin) return {PpdBlock{*begin, *end}, {}};
  if (replaced)
    return {{}, damage_at(*replaced, "a line replaced by a block of velmoctl that is gone")};
  return {};
}

std::string without_block(std::vector<PpdRecord> const& records, PpdBlock const& block)
{
  std::string plain;
  for (std::size_t i = 0; i < records.size(); ++i) {
    if (i >= block.begin && i <= block.end) continue;
    std::string_view bytes = records[i].bytes;
    if (is_replaced(records[i])) bytes.remove_prefix(REPLACED.size());
    plain += bytes;
  }
  // What somebody has put behind the block needs the line end in front of it.
  bool const is_last = block.end + 1 == records.size();
  if (is_last && line_of(records[block.begin + 1]) == NO_LINE_END)
    plain.resize(plain.size() - std::min(plain.size(), size_of_line_end(records[block.begin])));
  return plain;
}

std::vector<std::string> replaced_lines(std::vector<PpdRecord> const& records)
{
  std::vector<std::string> lines;
  for (PpdRecord const& record : records)
    if (is_replaced(record)) lines.emplace_back(record.bytes.substr(REPLACED.size()));
  return lines;
}

std::string marked_as_replaced(std::string_view record)
{
  std::string marked;
  for (std::size_t at = 0; at < record.size();) {
    std::size_t const end = end_of_line(record, at);
    marked += REPLACED;
    marked += record.substr(at, end - at);
    at = end;
  }
  return marked;
}
