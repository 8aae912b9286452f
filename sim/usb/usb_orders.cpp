// The lines with which a person changes the simulated USB printer while it runs: those of every
// simulated printer, and those for its plug.
#include "sim/usb/usb_orders.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <optional>

#include "sim/message.h"
#include "sim/setting_text.h"

namespace sim {

namespace {

using Kind = OrderResult::Kind;

std::optional<Stall> stall_named(std::string_view text)
{
  if (text == "on") return Stall::On;
  if (text == "once") return Stall::Once;
  if (text == "off") return Stall::Off;
  return {};
}

template <void (UsbPlug::*SET)(Stall)>
bool stall(UsbPlug& plug, std::string_view value)
{
  auto const how = stall_named(value);
  if (how) (plug.*SET)(*how);
  return how.has_value();
}

bool nak_out(UsbPlug& plug, std::string_view value)
{
  std::uint16_t seconds = 0;
  if (!parse_text(value, seconds)) return false;
  plug.nak_out(std::chrono::seconds(seconds));
  return true;
}

bool zero_length_packets(UsbPlug& plug, std::string_view value)
{
  bool on = false;
  if (!parse_text(value, on)) return false;
  plug.use_zero_length_packets(on);
  return true;
}

bool stale(UsbPlug& plug, std::string_view value)
{
  std::uint16_t bytes = 0;
  if (!parse_text(value, bytes)) return false;
  plug.send_stale(bytes);
  return true;
}

struct Row {
  std::string_view name;
  char const* argument;  // how its value is written
  char const* help;
  bool (*run)(UsbPlug& plug, std::string_view value);  // false: not such a value, or not now
};

constexpr char const* NOTHING = "";
constexpr char const* SIZE = "0..65535";
constexpr char const* HOW = "on|once|off";

constexpr Row ORDERS[] = {
    {"unplug", NOTHING, "pulls the plug out",
     [](UsbPlug& plug, std::string_view value) { return value.empty() && plug.unplug(); }},
    {"plug", NOTHING, "puts it in again",
     [](UsbPlug& plug, std::string_view value) { return value.empty() && plug.plug(); }},
    {"stall-in", HOW, "the host's reads fail, or the next one", stall<&UsbPlug::stall_in>},
    {"stall-out", HOW, "the host's writes fail, or the next one", stall<&UsbPlug::stall_out>},
    {"nak-out", SIZE, "the host's writes wait, for so many seconds", nak_out},
    {"zero-length-packets", "on|off", "an empty packet ends an answer that fills whole packets",
     zero_length_packets},
    {"stale", SIZE, "so many zero bytes that nobody asked for; 0: an empty packet", stale},
};

Row const* row_named(std::string_view word)
{
  auto const* const row = std::ranges::find(ORDERS, word, &Row::name);
  return row == std::end(ORDERS) ? nullptr : row;
}

bool is_for_plug(std::string_view order) { return row_named(take_until(order, " \t")) != nullptr; }

std::optional<EscapeCommand> command_named(std::string_view text)
{
  if (text == "wake-up") return EscapeCommand::WakeUp;
  if (text == "status-query") return EscapeCommand::StatusQuery;
  if (text == "job-status-query") return EscapeCommand::JobStatusQuery;
  return {};
}

std::string refusal(Row const& row, std::string_view value)
{
  if (!*row.argument && value.empty()) return std::string(row.name) + ": it is so already";
  return std::string(row.name) + ": bad value \"" + std::string(value) + "\": expected "
         + (*row.argument ? row.argument : "nothing");
}

OrderResult run_at(UsbPlug& plug, PrinterModel& printer, std::string_view rest)
{
  auto const command = command_named(take_until(rest, " \t"));
  std::string const order(trim(rest));
  if (!command || !is_for_plug(order))
    return {Kind::Refused,
            "at: expected wake-up|status-query|job-status-query and an order for the plug"};
  plug.at(*command, [&plug, &printer, order] {
    auto const result = run_usb_order(plug, printer, order);
    say("at last: " + result.text);
  });
  return {Kind::Accepted, "now: at " + std::string(name(*command)) + ", " + order};
}

}  // namespace

OrderResult run_usb_order(UsbPlug& plug, PrinterModel& printer, std::string_view line)
{
  auto value = trim(line);
  auto const word = take_until(value, " \t");
  value = trim(value);
  if (word == "at") return run_at(plug, printer, value);

  Row const* const row = row_named(word);
  if (!row) return run_order(printer, line);
  if (!row->run(plug, value)) return {Kind::Refused, refusal(*row, value)};
  return {Kind::Accepted, "now: " + std::string(trim(line))};
}

std::string usb_orders_help()
{
  std::string text;
  for (auto const& row : ORDERS)
    text += "  " + std::string(row.name) + ' ' + row.argument + ": " + row.help + '\n';
  return text + "  at wake-up|status-query|job-status-query ORDER: one of these, once, when a host\n    sends that\n";
}

}  // namespace sim
