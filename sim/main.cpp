// The simulator's command line: a network printer on this machine that a person can play.
#include <unistd.h>

#include <CLI/CLI.hpp>
#include <asio/io_context.hpp>
#include <asio/signal_set.hpp>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <string>
#include <system_error>

#include "sim/line_reader.h"
#include "sim/message.h"
#include "sim/orders.h"
#include "sim/printer_model.h"
#include "sim/printer_server.h"
#include "sim/setting_text.h"
#include "sim/settings.h"

namespace {

constexpr int USAGE_ERROR = 2;

// How the value is written on a command line, where blanks need quotes.
std::string shell_word(std::string const& argument)
{
  return argument.find(' ') == std::string::npos ? argument : '"' + argument + '"';
}

void add_setting(CLI::App& app, sim::PrinterModel& printer, sim::Setting const& setting)
{
  std::string const option = std::string("--") + setting.name;
  if (setting.is_switch) {
    app.add_flag_callback(
        option, [&] { setting.set(printer, "on"); }, setting.help);
    return;
  }
  auto const set = [&printer, &setting, option](std::string const& value) {
    if (!setting.set(printer, value)) {
      throw CLI::ValidationError(option, sim::refusal(setting, value));
    }
  };
  std::string const help = std::string(setting.help) + " (default " + setting.get(printer) + ')';
  app.add_option_function<std::string>(option, set, help)->type_name(shell_word(setting.argument));
}

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
  asio::signal_set signals(io, SIGINT, SIGTERM);
  signals.async_wait([&](asio::error_code, int) { io.stop(); });

  sim::PrinterServer const server(io, port, printer);
  sim::LineReader const orders(io, STDIN_FILENO, [&](std::string_view line) {
    auto const result = sim::run_order(printer, line);
    using Kind = sim::OrderResult::Kind;
    if (result.kind == Kind::Refused) sim::say(result.text, stderr);
    if (result.kind == Kind::Accepted || result.kind == Kind::Quit) sim::say(result.text);
    if (result.kind == Kind::Quit) io.stop();
  });
  io.run();
}

}  // namespace

int main(int argc, char** argv)
{
  signal(SIGPIPE, SIG_IGN);  // a reader of the messages that goes away does not end the printer
  signal(SIGTTIN, SIG_IGN);  // nor does a start in the background of a terminal stop it

  sim::PrinterModel printer;
  std::uint16_t port = 0;
  CLI::App app("Simulates the printer on a TCP port of this machine.");
  app.set_version_flag("--version", "velmo-printer-sim " VELMO_VERSION);
  add_port(app, port);
  for (auto const& setting : sim::settings()) add_setting(app, printer, setting);
  app.footer(
      "While it runs, the same settings are changed by orders, lines on standard input:\n"
      "`error 06 02 02`, `silent on`, ...; `quit` ends it.");
  try {
    app.parse(argc, argv);
  } catch (CLI::ParseError const& error) {
    return app.exit(error) == 0 ? 0 : USAGE_ERROR;
  }
  try {
    play(port, printer);
  } catch (std::system_error const& error) {
    sim::say("cannot listen on port " + std::to_string(port) + ": " + error.code().message(),
             stderr);
    return 1;
  }
}
