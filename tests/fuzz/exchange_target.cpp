// Every use of the exchange over a hostile channel.
#include <cstdint>

#include "protocol/device_channel.h"
#include "protocol/queries.h"
#include "tests/fuzz/conversation.h"
#include "tests/fuzz/exchange_rules.h"
#include "tests/fuzz/require.h"
#include "tests/fuzz/scripted_calls.h"
#include "tests/fuzz/status_rules.h"

namespace {

void wake_up(Conversation& conversation)
{
  int const result = wr_esc_wakeup();
  require(result == (walk_wake_up(conversation) ? 0 : -1), "the result of the wake-up");
}

void check_info(PrinterInfo const& info, std::optional<std::string> const& reply)
{
  require_equal(info.to_string(), reply ? info_text(read_status(*reply)) : "UNAVAILABLE");
}

void ask_status(Conversation& conversation)
{
  PrinterInfo const info = get_printer_info();
  check_info(info, walk_printer_status(conversation));
}

void ask_status_again_and_again(Conversation& conversation)
{
  PrinterInfo const info = get_printer_info_retry();
  check_info(info, walk_retried_printer_status(conversation));
}

void ask_job_status(Conversation& conversation)
{
  JobStatus const job = get_job_status();
  auto const reply = walk_job_status(conversation);
  require(job.isAvailable() == reply.has_value(), "available when the reply is complete");
  require(job.isReady() == (reply && is_job_ready(*reply)), "ready when the reply says so");
  require_equal(job.to_string(), reply ? job_text(*reply) : "UNAVAILABLE");
}

}  // namespace

// The first byte chooses the use, the rest is the script.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
  static constexpr void (*USES[])(Conversation&) = {wake_up, ask_status, ask_status_again_and_again,
                                                    ask_job_status};
  if (size == 0) return 0;
  follow_script(data + 1, size - 1);
  Conversation conversation;
  USES[data[0] % 4](conversation);
  conversation.expect_end();
  return 0;
}
