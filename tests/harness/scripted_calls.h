// A channel to the printer that does whatever a row of bytes says.
#pragma once

#include <span>
#include <string>

#include "tests/harness/outside_calls.h"

// The bytes decide the outcomes of the calls, in their order. Once they are used up, every call
// fails.
class ScriptedCalls {
public:
  explicit ScriptedCalls(std::span<unsigned char const> bytes) : script_(bytes) {}

  // The outcome of a call of the exchange; what its text refers to lives until the next one.
  Outcome meet(Call const& call);

private:
  unsigned next();
  Outcome request(Call const& call);
  Outcome read(Call const& call);

  std::span<unsigned char const> script_;
  std::size_t at_ = 0;
  std::string text_{};
};
