// The printer's replies: what may stand in them, where, and what the log says of it.
#pragma once

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "tests/oracle/levels.h"

// By default of a printer that is awake and well, with some of its ribbon left.
struct StatusReply {
  unsigned power = 0;
  std::array<unsigned, 2> mech{0, 0};
  unsigned memory = 0;
  std::array<unsigned, 3> error{0, 0, 0};
  unsigned total = 300;
  unsigned remaining = 120;
  unsigned ink_sheet = 0x84;

  // The bytes that the printer does not explain are all different from their neighbours and
  // from zero.
  [[nodiscard]] std::string bytes(std::size_t length = 192) const;

  [[nodiscard]] Ribbon ribbon() const { return {total, remaining, ink_sheet}; }
  [[nodiscard]] bool is_awake() const { return power == 0; }
  [[nodiscard]] bool is_mech_good() const
  {
    return (mech[0] == 0x00 || mech[0] == 0x20) && mech[1] == 0;
  }
  [[nodiscard]] bool is_memory_free() const { return memory < 255; }
  // The error code of the state that is reported, its first byte highest.
  [[nodiscard]] unsigned state_code() const;
  // Between the brackets of the "printer_info" line.
  [[nodiscard]] std::string info_text() const;
};

// Reads no further than byte 151.
StatusReply read_status(std::string_view reply);

// A job status reply with these four status bytes, and a job status as the log writes it.
std::string job_status_reply(std::array<unsigned, 4> status, std::size_t length = 20);
std::string job_text(std::string_view reply);
bool is_job_ready(std::string_view reply);
