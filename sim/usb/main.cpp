// The USB simulator's command line: a printer with a USB plug that a person can play. Programs see
// it that are run with umockdev's library and the folder that it names.
#include <CLI/CLI.hpp>
#include <asio/io_context.hpp>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <string>

#include "sim/command_line.h"
#include "sim/message.h"
#include "sim/printer_model.h"
#include "sim/printer_server.h"
#include "sim/usb/usb_device.h"
#include "sim/usb/usb_orders.h"
#include "sim/usb/usb_plug.h"

namespace {

void add_device(CLI::App& app, sim::UsbDevice& device)
{
  app.add_option("--serial", device.serial, "Serial number")
      ->type_name("TEXT")
      ->capture_default_str();
  app.add_option("--device-id", device.device_id, "IEEE 1284 device ID")
      ->type_name("TEXT")
      ->capture_default_str();
  app.add_flag("--full-speed", device.full_speed, "12 Mbit/s and packets of 64 bytes, not 512");
  app.add_flag("--one-way", device.one_way, "An interface that carries no answers");
}

void play(sim::UsbDevice const& device, sim::PrinterModel& printer)
{
  asio::io_context io;
  sim::PrinterServer const server(io, 0, printer);
  sim::UsbPlug plug(io, device, server.port());
  sim::serve(io, [&](std::string_view line) { return sim::run_usb_order(plug, printer, line); });
}

}  // namespace

int main(int argc, char** argv)
{
  sim::PrinterModel printer;
  sim::UsbDevice device;
  CLI::App app("Simulates the printer with a USB plug.");
  app.set_version_flag("--version", "velmo-usb-printer-sim " VELMO_VERSION);
  add_device(app, device);
  sim::add_settings(app, printer);
  app.footer(
      "Programs see it that are run with LD_PRELOAD=libumockdev-preload.so.0 and the folder\n"
      "at which it is plugged in as UMOCKDEV_DIR.\n\n"
      "While it runs, the printer's settings are changed by orders, lines on standard input:\n"
      "`error 06 02 02`, `silent on`, ...; `quit` ends it. Those for its plug:\n"
      + sim::usb_orders_help());
  if (auto const status = sim::parse(app, argc, argv)) return *status;
  try {
    play(device, printer);
  } catch (std::exception const& error) {
    sim::say(std::string("cannot be plugged in: ") + error.what(), stderr);
    return 1;
  }
  std::fflush(nullptr);
  std::_Exit(0);  // umockdev's thread cannot be waited for
}
