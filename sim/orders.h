// The lines with which a person changes the simulated printer while it runs.
#pragma once

#include <string>
#include <string_view>

#include "sim/printer_model.h"

namespace sim {

struct OrderResult {
  enum class Kind { Nothing, Accepted, Refused, Quit };
  Kind kind;
  std::string text;  // the acknowledgement, or what is wrong with the line; no newline

  bool operator==(OrderResult const&) const = default;
};

// Executes one line, `error 06 02 02` for example; a refused line changes nothing.
OrderResult run_order(PrinterModel& printer, std::string_view line);

}  // namespace sim
