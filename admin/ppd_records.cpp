// The records of a PPD file, cut as the scheduler's reader cuts them.
#include "admin/ppd_records.h"

#include <algorithm>

namespace {

constexpr std::string_view BLANKS = " \f\n\r\t\v";
constexpr std::string_view LINE_ENDS = "\r\n";
constexpr char IGNORED = 0x1a;  // an end of file in the manner of DOS
// Some drivers append data behind this comment; the reader stops there.
constexpr std::string_view END_OF_READING = "*%APLWORKSET START";

bool is_comment(std::string_view line) { return line.starts_with("*%"); }

// Follows the quotes of a line that may go on in the next.
class QuoteState {
public:
  // Takes a line into account, the text of the record so far in front of it.
  void read(std::string_view line, std::string& content)
  {
    for (char const ch : line) {
      if (ch == IGNORED) continue;
      content += ch;
      if (ch == ':' && !is_comment(content)) colon = true;
      if (ch == '"' && colon) open = !open;
    }
  }
  [[nodiscard]] bool isOpen() const { return open; }

private:
  bool colon = false;
  bool open = false;
};

// Takes what stands in front of the first of `stops` off the front of `rest`.
std::string take_until(std::string_view& rest, std::string_view stops)
{
  std::size_t const size = std::min(rest.find_first_of(stops), rest.size());
  std::string taken(rest.substr(0, size));
  rest.remove_prefix(size);
  return taken;
}

void skip_blanks(std::string_view& rest)
{
  rest.remove_prefix(std::min(rest.find_first_not_of(BLANKS), rest.size()));
}

// Kept: a value that ends in a quote loses its first character, whatever that is.
std::string unquoted(std::string_view value)
{
  value = value.substr(0, value.find_last_not_of(BLANKS) + 1);
  if (value.empty() || value.back() != '"') return std::string(value);
  value.remove_suffix(1);
  return std::string(value.substr(std::min<std::size_t>(1, value.size())));
}

void read_keyword_line(std::string_view rest, PpdRecord& record)
{
  std::string const keyword = take_until(rest, ": \f\n\r\t\v");
  if (keyword == "End") return;
  record.keyword = keyword;
  skip_blanks(rest);
  record.option = take_until(rest, ":/ \f\n\r\t\v");
  skip_blanks(rest);
  if (rest.starts_with('/')) {
    rest.remove_prefix(1);
    record.text = take_until(rest, ":\n");
  }
  if (!rest.starts_with(':')) return;
  rest.remove_prefix(1);
  skip_blanks(rest);
  record.value = unquoted(rest);
  record.has_value = true;
}

// The reader works on C strings: a zero byte hides the rest of its record.
void interpret(std::string_view content, PpdRecord& record)
{
  content = content.substr(0, content.find('\0'));
  if (content.starts_with('*') && !is_comment(content))
    read_keyword_line(content.substr(1), record);
}

}  // namespace

std::size_t end_of_line(std::string_view ppd, std::size_t from)
{
  std::size_t const end = ppd.find_first_of(LINE_ENDS, from);
  if (end == std::string_view::npos) return ppd.size();
  return ppd.substr(end, 2) == "\r\n" ? end + 2 : end + 1;
}

std::string_view line_at(std::string_view ppd, std::size_t from)
{
  return ppd.substr(from, ppd.find_first_of(LINE_ENDS, from) - from);
}

PpdRecords read_ppd_records(std::string_view ppd)
{
  PpdRecords result{};
  std::size_t line = 1;
  for (std::size_t at = 0; at < ppd.size();) {
    PpdRecord record{{}, line, {}, {}, {}, {}, false};
    std::string content;
    QuoteState quote;
    std::size_t end = at;
    do {
      if (end != at) content += '\n';
      quote.read(line_at(ppd, end), content);
      end = end_of_line(ppd, end);
      ++line;
    } while (quote.isOpen() && end < ppd.size());

    if (quote.isOpen()) result.open_quote = record.line;
    if (content == END_OF_READING && result.last_line_read == 0)
      result.last_line_read = record.line;
    record.bytes = ppd.substr(at, end - at);
    interpret(content, record);
    result.records.push_back(std::move(record));
    at = end;
  }
  return result;
}

bool is_reason_text(PpdRecord const& record)
{
  return record.has_value && same_keyword(record.keyword, "cupsIPPReason");
}

bool same_keyword(std::string_view one, std::string_view other)
{
  auto const lower = [](char ch) {
    return ch >= 'A' && ch <= 'Z' ? static_cast<char>(ch - 'A' + 'a') : ch;
  };
  return std::ranges::equal(one, other, {}, lower, lower);
}
