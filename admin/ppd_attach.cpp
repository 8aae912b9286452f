// Makes a PPD file name commandtovelmo, and undoes it. Bytes in, bytes out.
#include "admin/ppd_attach.h"

#include <algorithm>

#include "admin/command_filter.h"
#include "admin/ppd_block.h"
#include "admin/ppd_encoding.h"
#include "admin/ppd_rivals.h"

namespace {

using Records = std::vector<PpdRecord>;

PpdChange result(std::string ppd) { return {std::move(ppd), {}, {}}; }

PpdChange refused(std::string why, std::vector<std::string> rivals = {})
{
  return {{}, std::move(why), std::move(rivals)};
}

// Why nothing can be put at the end of this file, or taken out there; empty if it can.
std::string unfit_for_a_block(PpdRecords const& file, FoundBlock const& found)
{
  if (!found.damage.empty())
    return "the PPD file is damaged: " + found.damage + "; mend it by hand and give it back";
  if (file.open_quote != 0)
    return "line " + std::to_string(file.open_quote)
           + " of the PPD file opens a quote that is never closed; close it first";
  if (file.last_line_read != 0)
    return "the scheduler reads nothing behind line " + std::to_string(file.last_line_read)
           + " of the PPD file; take out what begins there first";
  return {};
}

std::string reason_line(std::string const& keyword, std::string const& text)
{
  return "*cupsIPPReason " + keyword + "/" + text + ": \"\"";
}

// The lines of the block that hold texts, written anew: somebody may have worked on them.
std::vector<std::string> reason_lines_of(Records const& records, PpdBlock const& block)
{
  std::vector<std::string> lines;
  for (std::size_t i = block.begin; i < block.end; ++i)
    if (is_reason_text(records[i]))
      lines.push_back(reason_line(records[i].option, records[i].text));
  return lines;
}

// The lines for these texts in the file's encoding; refused if a text cannot be written in it.
struct ReasonLines {
  std::vector<std::string> lines;
  std::string refusal;
};

ReasonLines reason_lines(std::vector<ReasonText> const& texts, Records const& records)
{
  ReasonLines result;
  cups_encoding_t const encoding = ppd_encoding(records);
  for (ReasonText const& entry : texts) {
    std::optional<std::string> const text = encoded(entry.text, encoding);
    if (!text)
      return {{},
              "the text for " + entry.keyword
                  + " holds a character that the encoding of the PPD file does not have"};
    result.lines.push_back(reason_line(entry.keyword, *text));
  }
  return result;
}

// A PPD file without filter lines is one of a PostScript printer, but only as long as it has
// none: hence the line that passes PostScript on.
std::vector<std::string> filter_block(FilterLines lines)
{
  std::string const type = "application/vnd.cups-command ";
  std::string const end = "0 " + std::string(FILTER_NAME) + "\"";
  if (lines == FilterLines::CupsFilter2)
    return {"*cupsFilter2: \"" + type + "application/octet-stream " + end};
  std::string ours = "*cupsFilter: \"" + type + end;
  if (lines == FilterLines::CupsFilter) return {std::move(ours)};
  return {"*cupsFilter: \"application/vnd.cups-postscript 0 -\"", std::move(ours)};
}

// Whether the earlier block had replaced all lines of the record.
bool was_replaced(PpdRecord const& record, std::vector<std::string> const& earlier)
{
  for (std::size_t at = 0; at < record.bytes.size();) {
    std::size_t const end = end_of_line(record.bytes, at);
    if (std::ranges::find(earlier, record.bytes.substr(at, end - at)) == earlier.end())
      return false;
    at = end;
  }
  return true;
}

std::string line_end_of(std::string_view ppd)
{
  std::size_t const end = ppd.find_first_of("\r\n");
  if (end == std::string_view::npos) return "\n";
  return std::string(ppd.substr(end, end_of_line(ppd, end) - end));
}

std::string with_block(std::string_view plain, Records const& records,
                       std::vector<std::size_t> const& rivals,
                       std::vector<std::string> const& lines)
{
  std::string ppd;
  for (std::size_t i = 0; i < records.size(); ++i)
    ppd += std::ranges::binary_search(rivals, i) ? marked_as_replaced(records[i].bytes)
                                                 : std::string(records[i].bytes);
  std::string const line_end = line_end_of(plain);
  bool const ended = plain.empty() || plain.ends_with('\n') || plain.ends_with('\r');
  if (!ended) ppd += line_end;
  ppd += std::string(BLOCK_BEGIN) + line_end;
  if (!ended) ppd += std::string(NO_LINE_END) + line_end;
  for (std::string const& line : lines) ppd += line + line_end;
  return ppd + std::string(BLOCK_END) + line_end;
}

std::string shown(std::string_view record)
{
  return std::string(record.substr(0, record.find_last_not_of("\r\n") + 1));
}

// The plain file with a block at its end, unless lines of its own stand in the way.
PpdChange put_in(std::string_view plain, std::vector<std::string> const& reasons, bool replace,
                 std::vector<std::string> const& replaced_earlier)
{
  PpdRecords const file = read_ppd_records(plain);
  FoundBlock const found = find_block(file.records);
  // Lines marked as replaced by somebody else may be anything once the mark is off.
  if (found.block) return refused("the PPD file has a second block behind its replaced lines");
  if (std::string why = unfit_for_a_block(file, found); !why.empty())
    return refused(std::move(why));
  Records const& records = file.records;
  std::vector<std::string> lines = filter_block(filter_lines(records));
  lines.push_back(our_command_list());
  lines.insert(lines.end(), reasons.begin(), reasons.end());

  std::vector<std::size_t> const rivals = ppd_rivals(records, lines);
  std::vector<std::string> in_the_way;
  for (std::size_t const rival : rivals)
    if (!replace && !was_replaced(records[rival], replaced_earlier))
      in_the_way.push_back(shown(records[rival].bytes));
  if (!in_the_way.empty())
    return refused("the PPD file has lines of its own for this; --replace puts ours in their place",
                   std::move(in_the_way));
  return result(with_block(plain, records, rivals, lines));
}

// A quote that is never closed, or an early end, may hide a block from the reader of records.
bool hides_a_block(std::string_view ppd, PpdRecords const& file)
{
  return (file.open_quote != 0 || file.last_line_read != 0)
         && (ppd.find(BLOCK_BEGIN) != std::string_view::npos
             || ppd.find(BLOCK_END) != std::string_view::npos);
}

bool is_our_line(PpdRecord const& record)
{
  return names_our_filter(record)
         && (same_keyword(record.keyword, "cupsFilter")
             || same_keyword(record.keyword, "cupsFilter2"));
}

}  // namespace

PpdChange attach(std::string_view ppd, AttachWishes const& wishes)
{
  PpdRecords const now = read_ppd_records(ppd);
  FoundBlock const found = find_block(now.records);
  if (std::string why = unfit_for_a_block(now, found); !why.empty()) return refused(std::move(why));

  ReasonLines reasons;
  if (found.block) reasons.lines = reason_lines_of(now.records, *found.block);
  if (wishes.reason_texts) {
    ReasonLines wanted = reason_lines(*wishes.reason_texts, now.records);
    if (!wanted.refusal.empty()) return refused(std::move(wanted.refusal));
    std::swap(reasons, wanted);
    if (reasons.lines == wanted.lines && !attachment_problem(now.records))
      return result(std::string(ppd));
  } else if (!attachment_problem(now.records)) {
    return result(std::string(ppd));
  }

  std::string const plain =
      found.block ? without_block(now.records, *found.block) : std::string(ppd);
  return put_in(plain, reasons.lines, wishes.replace, replaced_lines(now.records));
}

PpdChange detach(std::string_view ppd)
{
  PpdRecords const now = read_ppd_records(ppd);
  FoundBlock const found = find_block(now.records);
  bool const is_hidden = !found.block && hides_a_block(ppd, now);
  if (!found.damage.empty() || is_hidden) return refused(unfit_for_a_block(now, found));
  if (!found.block) return result(std::string(ppd));
  return result(without_block(now.records, *found.block));
}

Attachment read_attachment(std::string_view ppd)
{
  PpdRecords const file = read_ppd_records(ppd);
  FoundBlock const found = find_block(file.records);
  if (!found.damage.empty()) return {true, found.damage};
  if (!found.block && hides_a_block(ppd, file)) return {true, unfit_for_a_block(file, found)};
  std::optional<std::string> problem = attachment_problem(file.records);
  if (!problem) return {true, {}};
  if (found.block || std::ranges::any_of(file.records, is_our_line))
    return {true, std::move(*problem)};
  return {false, {}};
}
