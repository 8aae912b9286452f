// The lines with which a person changes the simulated printer while it runs.
#include "sim/orders.h"

#include <algorithm>

#include "sim/setting_text.h"
#include "sim/settings.h"

namespace sim {

namespace {

using Kind = OrderResult::Kind;

constexpr std::string_view QUIT = "quit";

std::string quoted(std::string_view text) { return '"' + std::string(text) + '"'; }

std::string unknown_order(std::string_view word)
{
  std::string text = "unknown order " + quoted(word) + ": expected one of ";
  for (auto const& setting : settings()) text += std::string(setting.name) + ", ";
  return text.append(QUIT);
}

}  // namespace

OrderResult run_order(PrinterModel& printer, std::string_view line)
{
  auto value = trim(line);
  if (value.empty()) return {Kind::Nothing, ""};
  auto const word = take_until(value, " \t");
  value = trim(value);

  if (word == QUIT) {
    if (!value.empty()) return {Kind::Refused, "quit: takes no value, got " + quoted(value)};
    return {Kind::Quit, "now: quit"};
  }
  auto const setting =
      std::ranges::find_if(settings(), [&](Setting const& row) { return word == row.name; });
  if (setting == settings().end()) return {Kind::Refused, unknown_order(word)};
  if (!setting->set(printer, value)) {
    return {Kind::Refused, std::string(word) + ": " + refusal(*setting, value)};
  }
  return {Kind::Accepted, "now: " + std::string(word) + ' ' + setting->get(printer)};
}

}  // namespace sim
