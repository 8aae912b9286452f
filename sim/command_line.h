// What the command lines of the simulated printers share, and how they take orders.
#pragma once

#include <CLI/CLI.hpp>
#include <asio/io_context.hpp>
#include <functional>
#include <optional>
#include <string_view>

#include "sim/orders.h"
#include "sim/printer_model.h"

namespace sim {

// An option for each of the printer's settings.
// REQUIRES: `printer` outlives `app`.
void add_settings(CLI::App& app, PrinterModel& printer);

// Nothing: the printer is to be played. Else the program's exit status.
std::optional<int> parse(CLI::App& app, int argc, char** argv);

// Serves, and executes the lines of standard input, until one of them or a signal ends it.
void serve(asio::io_context& io, std::function<OrderResult(std::string_view)> const& run);

}  // namespace sim
