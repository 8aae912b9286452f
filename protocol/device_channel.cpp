// The one way to talk to the printer: write a command, drain the backend, read the reply.
#include "protocol/device_channel.h"

#include <cups/backend.h>
#include <cups/cups.h>
#include <cups/sidechannel.h>
#include <unistd.h>

#include <cstdio>

#include "diag/dump_mem.h"
#include "diag/side_channel_status.h"

namespace {

constexpr double DRAIN_TIMEOUT = 5.0;  // seconds
constexpr double READ_TIMEOUT = 1.0;   // seconds

// Writes the command to the device stream and flushes it out to the backend.
bool send_command(std::string_view command)
{
  std::size_t const written = std::fwrite(command.data(), 1, command.size(), stdout);
  if (written != command.size()) {
    std::fprintf(stderr, "DEBUG: fwrite() failed. ret=%zu\n", written);
    return false;
  }
  if (std::fflush(stdout) != 0) {
    std::fputs("DEBUG: fflush() failed.\n", stderr);
    return false;
  }
  return true;
}

// Asks the backend to push out what is pending. A failure is logged and no more: the
// printer may well have got the command. What the backend returns is of no interest.
void drain_output(ReplyBuffer& scratch)
{
  int length = static_cast<int>(scratch.size());
  // An int: the library passes on whatever number the backend's answer holds.
  int const status =
      cupsSideChannelDoRequest(CUPS_SC_CMD_DRAIN_OUTPUT, scratch.data(), &length, DRAIN_TIMEOUT);
  if (status != CUPS_SC_STATUS_OK)
    std::fprintf(stderr, "DEBUG: CUPS_SC_CMD_DRAIN_OUTPUT=%s(%d)\n",
                 to_string(static_cast<cups_sc_status_e>(status)), status);
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
      std::fprintf(stderr, "DEBUG: cupsBackChannelRead() failed. ret=%zd\n", got);
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

bool exchange(Exchange const& use, ReplyBuffer& reply)
{
  std::fprintf(stderr, "DEBUG: %s() START\n", use.name);
  bool const succeeded = send_and_collect(use, reply);
  std::fprintf(stderr, "DEBUG: %s() END\n", use.name);
  return succeeded;
}

int wr_esc_wakeup()
{
  ReplyBuffer reply;
  return exchange(WAKE_UP, reply) ? 0 : -1;
}
