// The filter's run: command line, probe, wake-up, then one directive after the other.
#include <cups/file.h>
#include <cups/sidechannel.h>

#include <csignal>
#include <cstdio>
#include <string>

#include "diag/message.h"
#include "diag/side_channel_status.h"
#include "driver/report_commands.h"
#include "protocol/device_channel.h"

namespace {

constexpr double PROBE_TIMEOUT = 30.0;  // seconds

// Asks the backend whether the printer's answers can be read. Anything but a clear yes
// counts as no and is logged; the wording is the same whichever directive follows.
bool probe_bidirectional()
{
  char answer[512];
  int length = sizeof answer;
  // An int: the library passes on whatever number the backend's answer holds.
  int const status = cupsSideChannelDoRequest(CUPS_SC_CMD_GET_BIDI, answer, &length, PROBE_TIMEOUT);
  if (status == CUPS_SC_STATUS_OK && length == 1 && answer[0] == CUPS_SC_BIDI_SUPPORTED)
    return true;

  write_message(
      "DEBUG: Unable to retrieve supply status from printer - nobidirectional I/O available! ",
      to_string(static_cast<cups_sc_status_e>(status)), "(", std::to_string(status), ")\n");
  return false;
}

// Reads the command file to its end. The library skips comments and blank lines, and
// splits off a directive's value, which no directive of ours has.
void run_commands(cups_file_t* commands, bool bidirectional)
{
  char directive[1024];
  char* value = nullptr;
  int linenum = 0;
  while (cupsFileGetConf(commands, directive, sizeof directive, &value, &linenum)) {
    write_message("DEBUG: ====> command=[", directive, "] linenum=", std::to_string(linenum), "\n");
    run_report_command(directive, bidirectional);
  }
}

}  // namespace

int main(int argc, char* argv[])
{
  // The scheduler starts filters with SIGPIPE at its default. Ignored, a printer or
  // backend that went away shows as a failed flush or a timeout, with its message and
  // exit status, instead of a filter that died by a signal.
  std::signal(SIGPIPE, SIG_IGN);

  if (argc < 6 || argc > 7) {
    // Kept: no newline at the end.
    write_message("ERROR: Usage: ", argv[0], " job-id user title copies options [file]");
    return 1;
  }

  // Standard input that cannot be read is a command file without commands.
  cups_file_t* const commands = argc == 7 ? cupsFileOpen(argv[6], "r") : cupsFileStdin();
  if (argc == 7 && !commands) {
    std::perror("ERROR: Unable to open command file - ");
    return 1;
  }

  bool const bidirectional = probe_bidirectional();
  bool const awake = wr_esc_wakeup() == 0;
  if (awake) run_commands(commands, bidirectional);
  if (commands) cupsFileClose(commands);
  return awake ? 0 : 1;
}
