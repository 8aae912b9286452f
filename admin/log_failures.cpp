// The lines of a log that tell of a failure, with cause and cure.
#include "admin/log_failures.h"

#include <algorithm>

#include "admin/log_line.h"

namespace {

constexpr LogFailure FAILURES[] = {
    {"Unable to retrieve supply status from printer - nobidirectional I/O available! "
     "CUPS_SC_STATUS_OK(1)",
     "the backend says that the connection is one-way: some USB printers, the ipp backend",
     "connect the printer through a backend that hands on answers, such as socket: or usb:"},
    {"Unable to retrieve supply status from printer - nobidirectional I/O available! "
     "CUPS_SC_STATUS_TIMEOUT(3)",
     "the backend said nothing for 30 seconds: it is not made for such questions, or still looks "
     "for the printer",
     "look at the device URI (lpstat -v), at the printer and its cable"},
    {"Unable to retrieve supply status from printer - nobidirectional I/O available! ...",
     "the backend does not know the question, or has ended",
     "a line of the backend's own in the log; otherwise another backend"},
    {"fwrite() failed. ret=...", "the backend has ended",
     "a line of the backend's own in the log tells why; printer and cable"},
    {"fflush() failed.", "the backend has ended",
     "a line of the backend's own in the log tells why; printer and cable"},
    {"CUPS_SC_CMD_DRAIN_OUTPUT=CUPS_SC_STATUS_TIMEOUT(3)",
     "the backend did not send what was pending within 5 seconds: it is not connected yet, the "
     "printer takes nothing, or, over USB, the request was lost",
     "none if an answer follows; otherwise printer and cable"},
    {"CUPS_SC_CMD_DRAIN_OUTPUT=...", "the backend did not send what was pending, or has ended",
     "none if an answer follows; otherwise printer and cable"},
    {"cupsBackChannelRead() failed. ret=...",
     "nothing came for a second: the printer is silent, or its answer was shorter than 192 bytes",
     "switch the printer on, look at its cable; if the backend counts bytes nevertheless, it is "
     "another model"},
    {"printer_info=[UNAVAILABLE]", "the question failed, for the reason above",
     "that of the failure above"},
    {"#retry over", "61 answers said that the printer is not awake",
     "wake the printer up at its panel, or switch it off and on"},
    {"encountered undefined error number (...)", "an error code without a keyword of its own",
     "what the printer's panel and manual say"},
    {"Unable to open command file - ...", "the scheduler's spool file is gone or cannot be read",
     "send the job again; look at the disk under /var/spool/cups"},
    {"Usage: ... job-id user title copies options [file]",
     "the filter was not started by the scheduler", "let the scheduler start it"},
    {"Not found default(destination) printer.",
     "the reasons of the default queue were to be removed, and there is none",
     "lpadmin -d QUEUE names one"},
    {"Unable to start filter \"commandtovelmo\" - ...",
     "the filter is not there, does not belong to root, or others can write it or its folder",
     "install the package anew, or chown root:root and chmod 0755 for both"},
    {"Stopping job because the scheduler could not execute a filter.",
     "a filter could not be started; the job stays in the queue",
     "mend the filter, then cancel the job"},
    {"PID ...commandtovelmo) stopped with status ...",
     "the wake-up could not be written, or the command file not be opened",
     "that of the filter's failure above"},
    {"PID ...commandtovelmo) crashed on signal ...", "the filter ended by a signal",
     "report it, with the log"},
    {"PID .../backend/... stopped with status ...", "the backend gave up",
     "a line of the backend's own in the log tells why; printer and cable"},
    {"The printer may not exist or is unavailable at this time.",
     "nobody listens at the device URI", "look at the device URI (lpstat -v), printer and cable"},
    {"The printer is not responding.", "the printer's address does not answer",
     "look at the device URI (lpstat -v), printer and cable"},
    {"Job stopped due to filter errors...", "the filter ended with a failure",
     "that of the filter's failure, or of the one with its PID"},
    {"Job aborted due to backend errors...", "the backend gave up",
     "a line of the backend's own in the log tells why; printer and cable"},
    {"Printer stopped due to backend errors...",
     "the backend gave up, and the queue's error policy stops it",
     "printer and cable, then cupsenable QUEUE"},
};

}  // namespace

std::span<LogFailure const> log_failures() { return FAILURES; }

LogFailure const* find_log_failure(std::string_view text)
{
  auto const* const found = std::ranges::find_if(
      FAILURES, [&](LogFailure const& failure) { return is_like(text, failure.message); });
  return found == std::end(FAILURES) ? nullptr : found;
}
