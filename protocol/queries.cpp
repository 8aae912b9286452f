// What can be asked of the printer.
#include "protocol/queries.h"

#include <unistd.h>

#include "diag/message.h"
#include "protocol/device_channel.h"
#include "protocol/retry_counter.h"

namespace {

constexpr unsigned RETRY_LIMIT = 60;
constexpr unsigned RETRY_PAUSE = 1;  // seconds

PrinterInfo query_until_awake()
{
  RetryCounter wake_up(RETRY_LIMIT);
  for (;;) {
    PrinterInfo const info = get_printer_info();
    write_message("DEBUG: printer_info=[", info.to_string(), "]\n");
    if (!info.isAvailable()) return info;

    wake_up.Test(info.isWakeUp());
    write_message("DEBUG: #retry_status=[wake_up=", wake_up.to_string(), "]\n");
    if (wake_up.isFulfilled()) return info;
    if (wake_up.isExpired()) {
      // Kept: the last reply is discarded although it is a valid one.
      write_message("DEBUG: #retry over\n");
      return PrinterInfo::Unavailable();
    }
    sleep(RETRY_PAUSE);
  }
}

}  // namespace

PrinterInfo get_printer_info()
{
  ReplyBuffer reply;
  return run_exchange(PRINTER_STATUS, reply) ? PrinterInfo::Parse(reply.data())
                                             : PrinterInfo::Unavailable();
}

PrinterInfo get_printer_info_retry()
{
  write_message("DEBUG: get_printer_info_retry() START\n");
  PrinterInfo const info = query_until_awake();
  write_message("DEBUG: get_printer_info_retry() END\n");
  return info;
}

JobStatus get_job_status()
{
  ReplyBuffer reply;
  return run_exchange(JOB_STATUS, reply) ? JobStatus::Parse(reply.data())
                                         : JobStatus::Unavailable();
}
