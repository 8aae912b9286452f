// What a log tells of one job: what was asked, answered, reported, and what failed.
#include "admin/job_story.h"

#include <algorithm>
#include <charconv>

#include "admin/command_filter.h"
#include "admin/job_lines.h"
#include "admin/log_failures.h"
#include "admin/ppd_records.h"
#include "admin/reply_text.h"
#include "protocol/device_channel.h"

namespace {

constexpr std::string_view REPLY = "[STS] ";
constexpr std::string_view REASON_ADDED = "STATE: +com.velmo-error";
constexpr std::string_view REASON_TAKEN_BACK = "STATE: -com.velmo-error";
constexpr std::string_view RECEIVED = "Received ";  // N bytes of back-channel data
constexpr std::string_view NO_ANSWER = "cupsBackChannelRead() failed.";
constexpr std::string_view READING = "printer_info=[";

}  // namespace

JobStory::JobStory(LogLine const& first) : job(first.job), time(shown(first.time)) {}

void JobStory::add(LogLine const& line)
{
  if (line.text.starts_with(REPLY)) return addReplyLine(line.text.substr(REPLY.size()));
  if (is_of_filter(line.text)) {
    of_filter = true;
    closeReply();
  }
  if (line.text.starts_with(REASON_TAKEN_BACK)) {
    ++taken_back;
    return;
  }
  addLine(line);
}

void JobStory::addReplyLine(std::string_view line)
{
  if (begins_reply(line)) closeReply();
  reply.add(line);
  if (reply.isWhole()) closeReply();
}

void JobStory::closeReply()
{
  if (!reply.isBegun()) return;
  std::string const& bytes = reply.getBytes();
  auto const least = static_cast<std::size_t>(of_job_status ? JOB_STATUS.minimum_reply
                                                            : PRINTER_STATUS.minimum_reply);
  closeTakenBack();
  unread = !reply.isWhole() || bytes.size() < least;
  if (unread)
    told.add("Answer", "not all of its lines are in the log");
  else if (of_job_status)
    told.add("Answer", job_status_text(bytes));
  else
    told.add("Answer", std::to_string(bytes.size()) + " bytes", reply_text(bytes));
  reply = {};
}

void JobStory::addLine(LogLine const& line)
{
  std::string_view const text = line.text;
  if (is_like(text, "get_...() START")) {
    of_job_status = text.starts_with(JOB_STATUS.name);
    received = 0;
  }
  if (text.starts_with(RECEIVED)) return addReceived(text.substr(RECEIVED.size()));
  if (is_like(text, R"(Queued on "..." by "...".)")) return addQueued(text);
  if (is_like(text, "====> command=[...] linenum=...")) return addDirective(text);
  if (std::string const marker = marker_text(text); !marker.empty()) {
    closeTakenBack();
    return told.add("Reported", marker);
  }
  addOther(line);
}

void JobStory::addReceived(std::string_view text)
{
  unsigned short bytes = 0;
  std::from_chars(text.data(), text.data() + text.size(), bytes);
  received += bytes;
}

void JobStory::addQueued(std::string_view text)
{
  constexpr std::string_view BETWEEN = "\" by \"";
  text = text.substr(text.find('"') + 1);
  std::size_t const at = text.find(BETWEEN);
  queue = shown(text.substr(0, at));
  text.remove_prefix(at + BETWEEN.size());
  user = shown(text.substr(0, text.size() - 2));
}

void JobStory::addDirective(std::string_view text)
{
  text.remove_prefix(text.find('[') + 1);
  std::size_t const at = text.rfind("] linenum=");
  std::string_view const name = text.substr(0, at);
  std::string_view const number = text.substr(text.find('=', at) + 1);
  bool const known = std::ranges::any_of(
      OUR_COMMANDS, [&](std::string_view command) { return same_keyword(name, command); });
  closeTakenBack();
  told.beginChapter();
  told.add("Asked", shown(name) + ", line " + shown(number) + " of the command file"
                        + (known ? "" : ": none of the filter's directives, skipped"));
}

void JobStory::addOther(LogLine const& line)
{
  std::string_view const text = line.text;
  LogFailure const* const failure = find_log_failure(text);
  bool const is_reason = text.starts_with(REASON_ADDED);
  bool const is_end = is_end_of_job(text);
  bool const is_reading = unread && text.starts_with(READING);
  bool const is_loud = line.level != 'I' && line.level != 'D' && line.level != 'd';
  if (is_end) end = shown(text);
  if (!failure && !is_reason && !is_reading && (is_end || !is_loud)) return;
  closeTakenBack();
  if (text.starts_with(NO_ANSWER) && received > 0)
    told.add("Answer", std::to_string(received) + " bytes, by the backend's count; not logged");
  if (failure)
    told.add("Failed", shown(text),
             "    Cause   " + std::string(failure->cause) + "\n    Cure    "
                 + std::string(failure->cure) + "\n");
  else if (is_reason)
    told.add("Reported", "reason " + shown(text.substr(text.find('+') + 1)));
  else
    told.add(is_reading ? "As read" : "Said", shown(text));
}

void JobStory::closeTakenBack()
{
  if (taken_back > 0) told.add("Reported", std::to_string(taken_back) + " reasons taken back");
  taken_back = 0;
}

std::string JobStory::text()
{
  closeReply();
  closeTakenBack();
  std::string const where = isQueued() ? " on " + queue + " for " + user
                                       : " (its beginning is above, or not in this log)";
  std::string all = "Job " + std::to_string(job) + where + ", " + time + "\n";
  if (told.isEmpty())
    all += "  Note      the log does not hold what the filter says; cupsctl --debug-logging\n";
  return all + told.text() + "  Ended     " + (end.empty() ? "not seen" : end) + "\n";
}
