// The calls with which our code reaches outside itself, and a place to meet them in a test's
// own process.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "tests/harness/replaced_calls.h"

struct Call {
  enum class Kind { Message, Write, Flush, Request, Read, Pause, Sleep, Directive, StandardInput };

  Kind kind;
  std::string_view text{};  // what is written: a message, or a command for the printer
  long number = 0;          // of a request its command, of a write the size of one element, of
                            // the pauses how long, in the unit of the call
  long room = 0;            // for what is read
  double timeout = 0;       // seconds

  bool operator==(Call const&) const = default;
};

// What a call gives. Texts live until the next call.
struct Outcome {
  long result = 0;              // of a directive its line, 0 at the end of the file
  std::string_view text{};      // what was read; a read of some bytes gives their number
  std::optional<int> length{};  // of an answer, when it is not that of its text
};

// While it lives, the calls of this thread come to `meet`: writev to standard error, fwrite and
// fflush of standard output, sleep, usleep, cupsSideChannelDoRequest, cupsBackChannelRead,
// cupsFileGetConf and cupsFileStdin. Where `meet` has nothing to give, the call is made as always
// and `note` is told what came of it. The innermost one counts.
class OutsideCalls {
public:
  using Meet = std::function<std::optional<Outcome>(Call const&)>;
  using Note = std::function<void(Call const&, Outcome const&)>;

  explicit OutsideCalls(
      Meet meet_call, Note note_call = [](Call const&, Outcome const&) {});
  ~OutsideCalls();
  OutsideCalls(OutsideCalls const&) = delete;
  OutsideCalls& operator=(OutsideCalls const&) = delete;

  Meet const meet;
  Note const note;
  // The one that is being written. It has its room before the first one: a test that counts
  // allocations must not see this one, and the exhaustive runs cannot afford one for each.
  std::string message{};

private:
  ReplacementScope const scope_{};
  OutsideCalls* const outer_;
};
