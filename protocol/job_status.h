// The printer's job status reply, parsed.
#pragma once

#include <cstdint>
#include <string>

class JobStatus {
public:
  enum class Type : std::int32_t {
    Unavailable = 0,  // no reply could be had
    Available = 1,    // the status bytes come from a reply
  };

  explicit JobStatus(Type kind);

  static JobStatus Unavailable();
  // Takes the four status bytes of a job status reply; nothing is checked.
  // REQUIRES: at least 20 readable bytes at `reply`.
  static JobStatus Parse(char const* reply);

  [[nodiscard]] bool isAvailable() const;
  // The status bytes say that the printer is ready. False when no reply could be had.
  [[nodiscard]] bool isReady() const;
  // Text for the log: "UNAVAILABLE", or the four bytes as "0x50,0x31,0x00,0x00".
  [[nodiscard]] std::string to_string() const;

private:
  Type type;
  std::uint8_t status[4] = {};
};
