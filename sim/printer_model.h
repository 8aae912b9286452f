// The simulated printer: its state, and the replies in which it tells that state.
#pragma once

#include <array>
#include <cstdint>
#include <vector>

namespace sim {

using Bytes = std::vector<std::uint8_t>;

struct PrinterModel {
  std::array<std::uint8_t, 3> error{};
  std::uint16_t total = 700;      // prints on a new ribbon
  std::uint16_t remaining = 350;  // prints
  std::uint8_t ink_sheet = 0x84;
  std::uint8_t power = 0x00;  // once awake
  std::array<std::uint8_t, 2> mechanism{};
  std::uint8_t memory = 0x00;
  std::uint16_t asleep = 0;  // status replies that will still say "not awake"
  std::array<std::uint8_t, 4> job_status{};

  std::uint16_t reply_length = 192;      // bytes
  std::uint16_t job_reply_length = 20;   // bytes
  std::vector<std::uint16_t> fragments;  // bytes of each piece but the last; empty: one piece
  std::uint16_t delay = 0;               // milliseconds before each piece
  bool silent = false;
  bool close_after_wake_up = false;
  bool counts_prints = false;  // what is no escape command is a print, and uses the ribbon up
};

// The reply to a status query. Counts `asleep` down: each reply brings the printer nearer to
// being awake.
Bytes status_reply(PrinterModel& printer);

// A print has come out.
void use_up_print(PrinterModel& printer);

// The reply to a job status query.
Bytes job_status_reply(PrinterModel const& printer);

// Cuts a reply into pieces of these sizes and a last piece with the rest. No piece is empty.
std::vector<Bytes> cut(Bytes const& reply, std::vector<std::uint16_t> const& sizes);

}  // namespace sim
