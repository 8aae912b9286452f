// The table of what a person can set on the simulated printer, at its start and while it runs.
#pragma once

#include <span>
#include <string>
#include <string_view>

#include "sim/printer_model.h"

namespace sim {

struct Setting {
  char const* name;      // "error": the option --error and the order `error`
  char const* argument;  // how its value is written, for help and messages
  char const* help;
  bool (*set)(PrinterModel& printer, std::string_view value);  // false: not such a value
  std::string (*get)(PrinterModel const& printer);
  bool is_switch;  // "on" or "off"; as an option it stands alone and means "on"
};

std::span<Setting const> settings();

// What to say about a value that a setting refuses.
std::string refusal(Setting const& setting, std::string_view value);

}  // namespace sim
