// The backend and the printer behind it, played from a script that is a value.
#pragma once

#include <string>
#include <vector>

// What a channel brings while the filter waits for it: bytes, nothing, or its end.
struct Feed {
  std::string bytes{};
  bool ends = false;
};

inline Feed silence() { return {}; }
inline Feed channel_end() { return {.ends = true}; }

// One feed for each wait; silence after the last.
using Reply = std::vector<Feed>;

// The backend's answer to a side-channel request: command, status, length, data.
std::string side_channel_frame(int command, int status, std::string const& data = "");

inline constexpr int SC_DRAIN_OUTPUT = 2;
inline constexpr int SC_GET_BIDI = 3;
inline constexpr int SC_OK = 1;

struct PrinterScript {
  Feed probe{side_channel_frame(SC_GET_BIDI, SC_OK, "\x01")};
  std::vector<Feed> drains{};    // the wake-up's first, then one for each query; then all OK
  std::vector<Reply> replies{};  // one for each status query; then silence
  Reply job_status{};            // for each query of the job status
  bool hangs_up_after_wake_up = false;
};

// Follows the script: told what the filter says, asked what it hears.
class ScriptedPrinter {
public:
  explicit ScriptedPrinter(PrinterScript script) : script_(std::move(script)) {}

  void hear_device(std::string const& bytes);
  void hear_request(std::string const& frame);
  Feed side_channel_feed();
  Feed back_channel_feed();
  [[nodiscard]] bool hangs_up() const { return script_.hangs_up_after_wake_up && !heard_.empty(); }

private:
  PrinterScript script_;
  std::string heard_{};
  std::string request_{};
  size_t drains_ = 0;
  size_t queries_ = 0;
  bool job_status_asked_ = false;
  size_t waits_of_query_ = 0;
};
