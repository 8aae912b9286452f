// What a queue's values come to, in one word.
#include "admin/verdict.h"

#include <algorithm>

#include "report/printer_state_reasons.h"

namespace {

constexpr std::string_view OUR_REASONS = "com.velmo-error";
constexpr std::string_view USED_UP_REASON = "com.velmo-error0005";
constexpr int LEVELS_UNAVAILABLE = -2;
constexpr int LEVEL_UNKNOWN = -1;

bool has_reason(Queue const& queue, std::string_view reason)
{
  return std::ranges::find(queue.reasons, reason) != queue.reasons.end();
}

bool is_ours(std::string const& reason) { return reason.starts_with(OUR_REASONS); }

// The same keyword stands for a printer that does not answer and, with a level, for a code
// that is not in the table: an error.
bool does_not_answer(Queue const& queue)
{
  if (queue.level.value_or(LEVELS_UNAVAILABLE) != LEVELS_UNAVAILABLE) return false;
  if (has_reason(queue, UNAVAILABLE_REASON)) return true;
  return queue.level && std::ranges::none_of(queue.reasons, is_ours);
}

}  // namespace

Verdict verdict_of(Queue const& queue, int low)
{
  if (!queue.isAttached()) return Verdict::NotAttached;
  if (queue.state == IPP_PSTATE_STOPPED) return Verdict::QueueStopped;
  if (does_not_answer(queue)) return Verdict::DoesNotAnswer;
  if (queue.level == 0 && has_reason(queue, USED_UP_REASON)) return Verdict::RibbonUsedUp;
  if (std::ranges::any_of(queue.reasons, is_ours)) return Verdict::PrinterError;
  if (!queue.level) return Verdict::NeverAsked;
  if (*queue.level <= LEVEL_UNKNOWN) return Verdict::UnknownLevel;
  if (*queue.level == 0) return Verdict::RibbonUsedUp;
  return *queue.level < low ? Verdict::RibbonLow : Verdict::Ready;
}

std::string filter_fault(Queue const& queue)
{
  for (char const* reason : {"cups-missing-filter-warning", "cups-insecure-filter-warning"})
    if (has_reason(queue, reason))
      return std::string("the scheduler does not start a filter of the queue (") + reason + ")";
  return {};
}

std::string verdict_text(Verdict verdict, char between)
{
  constexpr char const* TEXTS[] = {
      "printer error", "ribbon used up", "queue stopped", "does not answer", "unknown level",
      "never asked",   "not attached",   "ribbon low",    "ready",
  };
  std::string text = TEXTS[static_cast<std::size_t>(verdict)];
  std::ranges::replace(text, ' ', between);
  return text;
}

Severity severity_of(Verdict verdict)
{
  if (verdict == Verdict::Ready) return Severity::Ok;
  if (verdict == Verdict::RibbonLow) return Severity::Warning;
  return verdict <= Verdict::QueueStopped ? Severity::Critical : Severity::Unknown;
}
