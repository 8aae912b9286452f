// A queue's values as people and programs are shown them.
#include "admin/queue_status.h"

#include <algorithm>
#include <charconv>
#include <cstdio>

#include "admin/ppd_encoding.h"
#include "report/printer_state_reasons.h"

namespace {

// Takes a number off the front of the text.
std::optional<int> take_number(std::string_view& text)
{
  int number = 0;
  auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
  if (error != std::errc() || number < 0) return std::nullopt;
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  return number;
}

bool take_text(std::string_view& text, std::string_view what)
{
  if (!text.starts_with(what)) return false;
  text.remove_prefix(what.size());
  return true;
}

// The filter's marker-message, "Prints Remaining = 350 / 700".
std::optional<Prints> prints_of(std::string_view message)
{
  if (!take_text(message, "Prints Remaining = ")) return std::nullopt;
  std::optional<int> const left = take_number(message);
  if (!left || !take_text(message, " / ")) return std::nullopt;
  std::optional<int> const total = take_number(message);
  if (!total || !message.empty()) return std::nullopt;
  return Prints{*left, *total};
}

// The filter's marker-names, "Ribbon Type: 13x18(5x7″)". Of a printer that does not answer it
// reports type 00, for want of a better one.
std::string ribbon_of(Queue const& queue)
{
  std::string_view name = queue.ribbon;
  if (queue.level == -2 || !take_text(name, "Ribbon Type: ")) return {};
  return std::string(name);
}

std::vector<std::string> codes_of(std::string_view keyword)
{
  std::vector<std::string> codes;
  for (PrinterStateReason const& row : PRINTER_STATE_REASONS) {
    // The filter's own code for an exhausted ribbon is none that a printer shows.
    if (row.code[0] == 0xfe || !row.reasons[0] || keyword != row.reasons[0]) continue;
    char code[16];
    std::snprintf(code, sizeof code, "%02x %02x %02x", row.code[0], row.code[1], row.code[2]);
    codes.emplace_back(code);
  }
  return codes;
}

std::string text_of(std::string_view keyword, std::vector<PpdRecord> const& records)
{
  for (PpdRecord const& record : records)
    if (is_reason_text(record) && same_keyword(record.option, keyword))
      return decoded(record.text, ppd_encoding(records));
  return {};
}

}  // namespace

QueueStatus make_queue_status(Queue const& queue, std::string_view ppd, int low)
{
  QueueStatus status{queue, verdict_of(queue, low), ribbon_of(queue), prints_of(queue.message), {},
                     {}};
  if (queue.level_time != 0) status.age = std::max(0, queue.up_time - queue.level_time);
  PpdRecords const file = read_ppd_records(ppd);
  for (std::string const& keyword : queue.reasons)
    status.reasons.push_back({keyword, text_of(keyword, file.records), codes_of(keyword)});
  return status;
}

std::string shown_name(QueueStatus const& status)
{
  return status.server.empty() ? status.queue.name : status.queue.name + '@' + status.server;
}
