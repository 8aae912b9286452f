// What the command lines of the simulated printers share, and how they take orders.
#include "sim/command_line.h"

#include <unistd.h>

#include <asio/signal_set.hpp>
#include <csignal>
#include <string>

#include "sim/line_reader.h"
#include "sim/message.h"
#include "sim/settings.h"

namespace sim {

namespace {

constexpr int USAGE_ERROR = 2;

// How the value is written on a command line, where blanks need quotes.
std::string shell_word(std::string const& argument)
{
  return argument.find(' ') == std::string::npos ? argument : '"' + argument + '"';
}

void add_setting(CLI::App& app, PrinterModel& printer, Setting const& setting)
{
  std::string const option = std::string("--") + setting.name;
  if (setting.is_switch) {
    app.add_flag_callback(
        option, [&] { setting.set(printer, "on"); }, setting.help);
    return;
  }
  auto const set = [&printer, &setting, option](std::string const& value) {
    if (!setting.set(printer, value)) throw CLI::ValidationError(option, refusal(setting, value));
  };
  std::string const help = std::string(setting.help) + " (default " + setting.get(printer) + ')';
  app.add_option_function<std::string>(option, set, help)->type_name(shell_word(setting.argument));
}

}  // namespace

void add_settings(CLI::App& app, PrinterModel& printer)
{
  for (auto const& setting : settings()) add_setting(app, printer, setting);
}

std::optional<int> parse(CLI::App& app, int argc, char** argv)
{
  try {
    app.parse(argc, argv);
  } catch (CLI::ParseError const& error) {
    return app.exit(error) == 0 ? 0 : USAGE_ERROR;
  }
  return {};
}

void serve(asio::io_context& io, std::function<OrderResult(std::string_view)> const& run)
{
  signal(SIGPIPE, SIG_IGN);  // a reader of the messages that goes away does not end the printer
  signal(SIGTTIN, SIG_IGN);  // nor does a start in the background of a terminal stop it
  asio::signal_set signals(io, SIGINT, SIGTERM);
  signals.async_wait([&](asio::error_code, int) { io.stop(); });

  LineReader const orders(io, STDIN_FILENO, [&](std::string_view line) {
    auto const result = run(line);
    using Kind = OrderResult::Kind;
    if (result.kind == Kind::Refused) say(result.text, stderr);
    if (result.kind == Kind::Accepted || result.kind == Kind::Quit) say(result.text);
    if (result.kind == Kind::Quit) io.stop();
  });
  io.run();
}

}  // namespace sim
