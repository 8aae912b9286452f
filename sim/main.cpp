// The simulator's command line: a network printer on this machine that a person can play.
#include <CLI/CLI.hpp>
#include <asio/io_context.hpp>
#include <cstdint>
#include <cstdio>
#include <string>
#include <system_error>

#include "sim/command_line.h"
#include "sim/message.h"
#include "sim/orders.h"
#include "sim/printer_model.h"
#include "sim/printer_server.h"
#include "sim/setting_text.h"

namespace {

void add_port(CLI::App& app, std::uint16_t& port)
{
  auto const set = [&port](std::string const& value) {
    if (!sim::parse_text(value, port)) {
      throw CLI::ValidationError("--port", "bad value \"" + value + "\": expected 0..65535");
    }
  };
  app.add_option_function<std::string>("--port", set,
                                       "TCP port on 127.0.0.1, 0 picks a free one (default 0)")
      ->type_name("0..65535");
}

void play(std::uint16_t port, sim::PrinterModel& printer)
{
  asio::io_context io;
  sim::PrinterServer const server(io, port, printer);
  sim::serve(io, [&](std::string_view line) { return sim::run_order(printer, line); });
}

}  // namespace

int main(int argc, char** argv)
{
  sim::PrinterModel printer;
  std::uint16_t port = 0;
  CLI::App app("Simulates the printer on a TCP port of this machine.");
  app.set_version_flag("--version", "velmo-printer-sim " VELMO_VERSION);
  add_port(app, port);
  sim::add_settings(app, printer);
  app.footer(
      "While it runs, the same settings are changed by orders, lines on standard input:\n"
      "`error 06 02 02`, `silent on`, ...; `quit` ends it.");
  if (auto const status = sim::parse(app, argc, argv)) return *status;
  try {
    play(port, printer);
  } catch (std::system_error const& error) {
    sim::say("cannot listen on port " + std::to_string(port) + ": " + error.code().message(),
             stderr);
    return 1;
  }
}
