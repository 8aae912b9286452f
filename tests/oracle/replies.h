// Replies as the printer sends them.
#pragma once

#include <array>
#include <string>

// What may stand in a status reply; by default an awake, good printer with half a ribbon.
struct StatusReply {
  unsigned char memory_state = 0x00;
  unsigned char power_state = 0x00;
  std::array<unsigned char, 2> mech_state = {0x00, 0x00};
  std::array<unsigned char, 3> error = {0x00, 0x00, 0x00};
  unsigned char ink_sheet_type = 0x84;
  unsigned total = 700;
  unsigned remaining = 350;

  // The reply; bytes that no field takes hold a5, which no field has by default.
  [[nodiscard]] std::string bytes(std::size_t length = 192) const;
};

// A job status reply of this length with these four status bytes, a5 elsewhere.
std::string job_status_reply(std::array<unsigned char, 4> status, std::size_t length = 20);
