// The table of what a person can set on the simulated printer, at its start and while it runs.
#include "sim/settings.h"

#include <type_traits>

#include "sim/setting_text.h"

namespace sim {

namespace {

// The row for one field of the printer; the field's type decides how its value is written.
template <auto FIELD>
constexpr Setting row(char const* name, char const* argument, char const* help)
{
  return {
      name,
      argument,
      help,
      [](PrinterModel& printer, std::string_view value) {
        return parse_text(value, printer.*FIELD);
      },
      [](PrinterModel const& printer) { return to_text(printer.*FIELD); },
      std::is_same_v<decltype(FIELD), bool PrinterModel::*>,
  };
}

using P = PrinterModel;

constexpr char const* NUMBER = "0..65535";
constexpr char const* SWITCH = "on|off";

constexpr Setting SETTINGS[] = {
    row<&P::error>("error", "HH HH HH", "Printer error code, three hex bytes"),
    row<&P::total>("total", NUMBER, "Capacity of the ribbon, in prints"),
    row<&P::remaining>("remaining", NUMBER, "Prints left on the ribbon"),
    row<&P::ink_sheet>("ink-sheet", "HH", "Ink sheet type, one hex byte"),
    row<&P::power>("power", "HH", "Power state once awake, one hex byte; 00 is awake"),
    row<&P::mechanism>("mechanism", "HH HH", "Mechanism state, two hex bytes"),
    row<&P::memory>("memory", "HH", "Memory state, one hex byte; ff is full"),
    row<&P::asleep>("asleep", NUMBER,
                    "Status replies that say not awake (power state 01) before it is awake"),
    row<&P::reply_length>("reply-length", NUMBER, "Length of the status reply, in bytes"),
    row<&P::fragments>("fragments", "N,N,...|whole",
                       "Sizes of the pieces of a reply, in bytes; the rest goes as a last piece"),
    row<&P::delay>("delay", NUMBER, "Pause before each piece, in milliseconds"),
    row<&P::silent>("silent", SWITCH, "Never answer (default off)"),
    row<&P::close_after_wake_up>(
        "close-after-wake-up", SWITCH,
        "Close the connection when the wake-up has been heard (default off)"),
    row<&P::counts_prints>("count-prints", SWITCH,
                           "Take what is no escape command for a print, one a connection, that "
                           "uses the ribbon up (default off)"),
    row<&P::job_status>("job-status", "HH HH HH HH",
                        "Job status, four hex bytes (bytes 8 to 11 of the reply)"),
    row<&P::job_reply_length>("job-reply-length", NUMBER,
                              "Length of the job status reply, in bytes"),
};

}  // namespace

std::span<Setting const> settings() { return SETTINGS; }

std::string refusal(Setting const& setting, std::string_view value)
{
  return "bad value \"" + std::string(value) + "\": expected " + setting.argument;
}

}  // namespace sim
