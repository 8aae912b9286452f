// Several printers in one process, each with a state and a port of its own.
#include "sim/printers.h"

#include <utility>

#include "sim/setting_text.h"

namespace sim {

namespace {

using Kind = OrderResult::Kind;

constexpr std::string_view NOW = "now: ";
constexpr std::string_view DIGITS = "0123456789";

}  // namespace

Printers::Printer::Printer(asio::io_context& io, std::uint16_t port, PrinterModel like,
                           std::string name)
    : model(std::move(like)), server(io, port, model, std::move(name))
{
}

Printers::Printers(asio::io_context& io, std::uint16_t port, PrinterModel const& like,
                   std::uint16_t count)
{
  for (unsigned i = 0; i < count; ++i) {
    auto const own = static_cast<std::uint16_t>(port == 0 ? 0 : port + i);
    printers.emplace_back(io, own, like, count == 1 ? "" : std::to_string(i + 1));
  }
}

// Its plug is no part of what a printer tells, so it is not among its settings.
OrderResult Printers::run_at(Printer& printer, std::string_view order)
{
  auto const word = trim(order);
  if (word != "off" && word != "on") return run_order(printer.model, order);
  word == "on" ? printer.server.switch_on() : printer.server.switch_off();
  return {Kind::Accepted, std::string(NOW).append(word)};
}

OrderResult Printers::run_numbered(std::string_view line)
{
  std::string const number(take_until(line, " \t"));
  std::uint16_t which = 0;
  if (!parse_text(number, which) || which == 0 || which > printers.size())
    return {Kind::Refused,
            "no printer " + number + ": there are " + std::to_string(printers.size())};
  auto result = run_at(printers[which - 1U], line);
  if (result.kind == Kind::Quit)
    return {Kind::Refused, "quit: ends all printers, so it takes no number"};
  if (result.kind == Kind::Accepted) result.text.insert(NOW.size(), number + ' ');
  return result;
}

OrderResult Printers::run(std::string_view line)
{
  line = trim(line);
  if (line.find_first_of(DIGITS) == 0) return run_numbered(line);
  OrderResult result{Kind::Nothing, ""};
  for (auto& printer : printers) result = run_at(printer, line);
  return result;
}

}  // namespace sim
