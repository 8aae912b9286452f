// The steps of an exchange in their order, each with the message it has to leave.
#include "tests/fuzz/exchange_rules.h"

#include "tests/fuzz/require.h"
#include "tests/fuzz/status_rules.h"

namespace {

using namespace std::string_literals;
using Kind = Event::Kind;

constexpr long ROOM = 512;

struct Use {
  std::string name;
  std::string command;
  long minimum;  // 0 for no reply
};

std::string dump_text(std::string const& label, std::string const& bytes)
{
  static constexpr char DIGITS[] = "0123456789abcdef";
  std::string const line_head = "\nDEBUG: " + label + " 0";
  std::string text = "DEBUG: " + label + " size=" + std::to_string(bytes.size());
  text.reserve(text.size() + 5 * bytes.size() + 32);
  for (std::size_t i = 0; i < bytes.size(); ++i) {
    auto const byte = static_cast<unsigned char>(bytes[i]);
    if (i % 16 == 0) (text += line_head) += {DIGITS[i / 256], DIGITS[i / 16 % 16], '0', ':'};
    text += {' ', DIGITS[byte / 16], DIGITS[byte % 16]};
  }
  return text += "\n";
}

bool walk_sending(Conversation& conversation, std::string const& command)
{
  Event const& write = conversation.expect(Kind::Write);
  require_equal(write.text, command);
  if (write.result != static_cast<long>(command.size())) {
    conversation.expect_message("DEBUG: fwrite() failed. ret=" + std::to_string(write.result)
                                + "\n");
    return false;
  }
  if (conversation.expect(Kind::Flush).result == 0) return true;
  conversation.expect_message("DEBUG: fflush() failed.\n");
  return false;
}

void walk_draining(Conversation& conversation)
{
  Event const& drain = conversation.expect(Kind::Request);
  require(drain.argument == 2 && drain.timeout == 5.0, "a drain has 5 seconds");
  if (drain.result != 1)
    conversation.expect_message(
        "DEBUG: CUPS_SC_CMD_DRAIN_OUTPUT=" + side_channel_status_text(drain.result) + "\n");
}

std::optional<std::string> walk_reply(Conversation& conversation, long minimum)
{
  std::string reply;
  while (static_cast<long>(reply.size()) < minimum) {
    Event const& read = conversation.expect(Kind::Read);
    require(read.argument == ROOM - static_cast<long>(reply.size()), "the room that is left");
    require(read.timeout == 1.0, "a read has 1 second");
    if (read.result <= 0) {
      conversation.expect_message(
          "DEBUG: cupsBackChannelRead() failed. ret=" + std::to_string(read.result) + "\n");
      return std::nullopt;
    }
    reply += read.text;
  }
  conversation.expect_message(dump_text("[STS]", reply));
  return reply;
}

std::optional<std::string> walk_steps(Conversation& conversation, Use const& use)
{
  conversation.expect_message(dump_text("[CMD]", use.command));
  if (!walk_sending(conversation, use.command)) return std::nullopt;
  walk_draining(conversation);
  if (use.minimum > 0) return walk_reply(conversation, use.minimum);
  require(conversation.expect(Kind::Pause).argument == 500'000, "half a second for the printer");
  return "";
}

std::optional<std::string> walk_exchange(Conversation& conversation, Use const& use)
{
  conversation.expect_message("DEBUG: " + use.name + "() START\n");
  auto reply = walk_steps(conversation, use);
  conversation.expect_message("DEBUG: " + use.name + "() END\n");
  return reply;
}

std::optional<std::string> walk_attempts(Conversation& conversation)
{
  for (int failures = 0;;) {
    auto reply = walk_printer_status(conversation);
    conversation.expect_message("DEBUG: printer_info=["
                                + (reply ? info_text(read_status(*reply)) : "UNAVAILABLE") + "]\n");
    if (!reply) return std::nullopt;

    bool const awake = is_awake(read_status(*reply));
    if (!awake) ++failures;
    std::string const word = awake ? "fulfilled" : failures > 60 ? "expired" : "retrying";
    conversation.expect_message("DEBUG: #retry_status=[wake_up=" + word + "("
                                + std::to_string(failures) + "/60)]\n");
    if (awake) return reply;
    if (failures > 60) {
      conversation.expect_message("DEBUG: #retry over\n");
      return std::nullopt;
    }
    require(conversation.expect(Kind::Sleep).argument == 1, "a second between attempts");
  }
}

}  // namespace

bool walk_wake_up(Conversation& conversation)
{
  return walk_exchange(conversation, {"wr_esc_wakeup",
                                      "\x1b"
                                      "EWU",
                                      0})
      .has_value();
}

std::optional<std::string> walk_printer_status(Conversation& conversation)
{
  return walk_exchange(conversation, {"get_printer_info", "\x1bV21", 192});
}

std::optional<std::string> walk_job_status(Conversation& conversation)
{
  return walk_exchange(conversation, {"get_job_status", "\x1bV10\0\0"s, 20});
}

std::optional<std::string> walk_retried_printer_status(Conversation& conversation)
{
  conversation.expect_message("DEBUG: get_printer_info_retry() START\n");
  auto reply = walk_attempts(conversation);
  conversation.expect_message("DEBUG: get_printer_info_retry() END\n");
  return reply;
}

std::string side_channel_status_text(long status)
{
  static constexpr char const* NAMES[] = {
      "NONE",        "OK",          "IO_ERROR", "TIMEOUT",
      "NO_RESPONSE", "BAD_MESSAGE", "TOO_BIG",  "NOT_IMPLEMENTED"};
  std::string const name =
      status >= 0 && status < 8 ? "CUPS_SC_STATUS_"s + NAMES[status] : "UNKNOWN"s;
  return name + "(" + std::to_string(status) + ")";
}
