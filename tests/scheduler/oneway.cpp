// A backend for a printer that cannot answer: it says so on the side channel when asked.
// Device URI: oneway:/no (asked, it says no) or oneway:/unknown (it does not know the question).
#include <cups/sidechannel.h>
#include <poll.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <string_view>

namespace {

constexpr double ANSWER_TIMEOUT = 1.0;  // seconds

// Answers one side-channel request; an output without a buffer is always drained. False
// when the filter has left the channel.
bool answer(bool knows_bidi)
{
  cups_sc_command_t command;
  cups_sc_status_t status;
  char data[512];
  int length = sizeof data;
  if (cupsSideChannelRead(&command, &status, data, &length, ANSWER_TIMEOUT) != 0) return false;

  char const no = CUPS_SC_BIDI_NOT_SUPPORTED;
  if (command == CUPS_SC_CMD_GET_BIDI && knows_bidi)
    cupsSideChannelWrite(command, CUPS_SC_STATUS_OK, &no, 1, ANSWER_TIMEOUT);
  else if (command == CUPS_SC_CMD_DRAIN_OUTPUT)
    cupsSideChannelWrite(command, CUPS_SC_STATUS_OK, nullptr, 0, ANSWER_TIMEOUT);
  else
    cupsSideChannelWrite(command, CUPS_SC_STATUS_NOT_IMPLEMENTED, nullptr, 0, ANSWER_TIMEOUT);
  return true;
}

// Logs what goes to the printer, byte by byte; false at its end.
bool print()
{
  unsigned char byte;
  if (read(STDIN_FILENO, &byte, 1) != 1) return false;
  std::fprintf(stderr, "DEBUG: oneway prints %02x\n", byte);
  return true;
}

}  // namespace

int main()
{
  char const* const uri = std::getenv("DEVICE_URI");
  bool const knows_bidi = uri && std::string_view(uri) == "oneway:/no";

  pollfd channels[] = {{STDIN_FILENO, POLLIN, 0}, {CUPS_SC_FD, POLLIN, 0}};
  while (poll(channels, 2, -1) > 0) {
    if (channels[1].revents && !answer(knows_bidi)) channels[1].fd = -1;
    if (channels[0].revents && !print()) return 0;
  }
  return 1;
}
