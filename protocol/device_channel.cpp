// The one way to talk to the printer: write a command, drain the backend, read the reply.
#include "protocol/device_channel.h"

#include <cups/backend.h>
#include <cups/sidechannel.h>
#include <unistd.h>

#include <cstdio>
#include <string>

#include "diag/dump_mem.h"
#include "diag/message.h"
#include "diag/side_channel_status.h"

namespace {

constexpr double DRAIN_TIMEOUT = 5.0;  // seconds
constexpr double READ_TIMEOUT = 1.0;   // seconds

// Writes the command to the device stream and flushes it out to the backend.
bool send_command(std::string_view command)
{
  std::size_t const written = std::fwrite(command.data(), 1, command.size(), stdout);
  if (written != command.size()) {
    write_message("DEBUG: fwrite() failed. ret=", std::to_string(written), "\n");
    return false;
  }
  if (std::fflush(stdout) != 0) {
    write_message("DEBUG: fflush() failed.\n");
    return false;
  }
  return true;
}

// Asks the backend to push out what is pending. A failure is logged and no more: the
// printer may well have got the command. What the backend returns is of no interest; it lands
// where the reply will, since the library wants room for an answer and the reply's own is free
// until the first read.
void drain_output(ReplyBuffer& scratch)
{
  int length = static_cast<int>(scratch.size());
  // An int: the library passes on whatever number the backend's answer holds.
  int const status =
      cupsSideChannelDoRequest(CUPS_SC_CMD_DRAIN_OUTPUT, scratch.data(), &length, DRAIN_TIMEOUT);
  if (status != CUPS_SC_STATUS_OK)
    write_message(
        "DEBUG: CUPS_SC_CMD_DRAIN_OUTPUT=", to_string(static_cast<cups_sc_status_e>(status)), "(",
        std::to_string(status), ")\n");
}

// Collects at least `minimum` bytes in the order in which they arrive. One read that
// brings nothing ends it, even if some bytes had arrived.
bool collect_reply(ssize_t minimum, ReplyBuffer& reply)
{
  ssize_t received = 0;
  while (received < minimum) {
    ssize_t const got = cupsBackChannelRead(
        reply.data() + received, reply.size() - static_cast<std::size_t>(received), READ_TIMEOUT);
    if (got <= 0) {
      write_message("DEBUG: cupsBackChannelRead() failed. ret=", std::to_string(got), "\n");
      return false;
    }
    received += got;
  }
  dump_mem("[STS]", reply.data(), static_cast<int>(received));
  return true;
}

bool send_and_collect(Exchange const& use, ReplyBuffer& reply)
{
  dump_mem("[CMD]", use.command.data(), static_cast<int>(use.command.size()));
  if (!send_command(use.command)) return false;
  drain_output(reply);
  if (use.pause > 0) usleep(use.pause);
  return use.minimum_reply == 0 || collect_reply(use.minimum_reply, reply);
}

}  // namespace

bool run_exchange(Exchange const& use, ReplyBuffer& reply)
{
  write_message("DEBUG: ", use.name, "() START\n");
  bool const succeeded = send_and_collect(use, reply);
  write_message("DEBUG: ", use.name, "() END\n");
  return succeeded;
}

int wr_esc_wakeup()
{
  ReplyBuffer reply;
  return run_exchange(WAKE_UP, reply) ? 0 : -1;
}
