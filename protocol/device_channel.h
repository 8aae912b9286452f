// The one way to talk to the printer: write a command, drain the backend, read the reply.
#pragma once

#include <sys/types.h>

#include <array>
#include <string_view>

// Room for one reply; what is on its way beyond that stays in the back channel.
using ReplyBuffer = std::array<char, 512>;

// What makes one use of the exchange different from another.
struct Exchange {
  char const* name;          // the calling function's name, for its log lines
  std::string_view command;  // the escape command, every byte of it sent
  ssize_t minimum_reply;     // bytes to wait for; 0 for a command that has no reply
  unsigned pause;            // microseconds to wait after the command is out
};

// clang-format off
inline constexpr Exchange WAKE_UP{"wr_esc_wakeup", {"\033EWU", 4}, 0, 500'000};
inline constexpr Exchange PRINTER_STATUS{"get_printer_info", {"\033V21", 4}, 192, 0};
inline constexpr Exchange JOB_STATUS{"get_job_status", {"\033V10\0\0", 6}, 20, 0};
// clang-format on

// Sends a command to the printer on standard output, has the backend drain it (side
// channel, 5.0 seconds at most; a failed drain is only logged), and fills `reply` from
// the back channel until the minimum has arrived. A read waits 1.0 second at most.
//
// Returns false when the command cannot be written or flushed, or when a read brings
// nothing before the reply is complete; each failure is logged as a "DEBUG:" line. Bytes
// of a reply that was cut short are lost with the buffer.
bool run_exchange(Exchange const& use, ReplyBuffer& reply);

// Wakes the printer and gives it half a second. Returns 0, also when the drain failed,
// or -1 when the command cannot be written or flushed.
int wr_esc_wakeup();
