// The simulator's command line: a network printer on this machine that a person can play.
#include <CLI/CLI.hpp>
#include <asio/io_context.hpp>
#include <cstdint>
#include <cstdio>
#include <limits>
#include <string>
#include <system_error>

#include "sim/command_line.h"
#include "sim/message.h"
#include "sim/printer_model.h"
#include "sim/printers.h"
#include "sim/setting_text.h"

namespace {

constexpr int USAGE_ERROR = 2;

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

void add_count(CLI::App& app, std::uint16_t& count)
{
  auto const set = [&count](std::string const& value) {
    if (!sim::parse_text(value, count) || count == 0) {
      throw CLI::ValidationError("--printers", "bad value \"" + value + "\": expected 1..65535");
    }
  };
  app.add_option_function<std::string>("--printers", set,
                                       "So many printers, numbered from 1, each with a state and a "
                                       "port of its own, that of --port and those behind it "
                                       "(default 1)")
      ->type_name("1..65535");
}

bool is_room(std::uint16_t port, std::uint16_t count)
{
  return port == 0 || port + count - 1 <= std::numeric_limits<std::uint16_t>::max();
}

void play(std::uint16_t port, sim::PrinterModel const& printer, std::uint16_t count)
{
  asio::io_context io;
  sim::Printers printers(io, port, printer, count);
  sim::serve(io, [&](std::string_view line) { return printers.run(line); });
}

}  // namespace

int main(int argc, char** argv)
{
  sim::PrinterModel printer;
  std::uint16_t port = 0;
  std::uint16_t count = 1;
  CLI::App app("Simulates the printer on a TCP port of this machine.");
  app.set_version_flag("--version", "velmo-printer-sim " VELMO_VERSION);
  add_port(app, port);
  add_count(app, count);
  sim::add_settings(app, printer);
  app.footer(
      "While it runs, the same settings are changed by orders, lines on standard input:\n"
      "`error 06 02 02`, `silent on`, ...; `off` and `on` switch the printer; `quit` ends it.\n"
      "Of several printers, `7 error 06 02 02` changes one, and an order without a number all.");
  if (auto const status = sim::parse(app, argc, argv)) return *status;
  if (!is_room(port, count)) {
    sim::say("--printers: behind port " + std::to_string(port) + " there are not so many ports",
             stderr);
    return USAGE_ERROR;
  }
  try {
    play(port, printer, count);
  } catch (std::system_error const& error) {
    sim::say(std::string("cannot listen on ") + error.what(), stderr);
    return 1;
  }
}
