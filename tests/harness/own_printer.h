// Backend and printer, played inside the filter's own process: they move when it waits.
#pragma once

#include <sys/socket.h>

#include "tests/harness/memory_file.h"
#include "tests/harness/outside_calls.h"
#include "tests/harness/own_channels.h"
#include "tests/harness/scripted_printer.h"

// While it lives, the filter's calls meet the fault that is watched for, or else this printer. It
// hears what gets into `device`; every message is kept in `attempts` before it is written, with
// a zero byte behind it.
class OwnPrinter {
public:
  OwnPrinter(PrinterScript const& script, MemoryFile const& device_file,
             MemoryFile const& attempts_file);

private:
  std::optional<Outcome> meet(Call const& call) const;
  std::optional<int> begin(Wait wait);
  void hear_device();
  void answer_request();
  void send_reply();

  ScriptedPrinter printer_;
  MemoryFile const& device_;
  MemoryFile const& attempts_;
  std::size_t heard_ = 0;
  // Packets keep the borders between requests, and between answers.
  OwnChannels channels_{SOCK_SEQPACKET, [this](Wait wait) { return begin(wait); }};
  OutsideCalls calls_{[this](Call const& call) { return meet(call); },
                      [this](Call const& call, Outcome const& /*outcome*/) {
                        if (call.kind == Call::Kind::Flush) hear_device();
                      }};
};
