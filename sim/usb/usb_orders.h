// The lines with which a person changes the simulated USB printer while it runs: those of every
// simulated printer, and those for its plug.
#pragma once

#include <string>
#include <string_view>

#include "sim/orders.h"
#include "sim/printer_model.h"
#include "sim/usb/usb_plug.h"

namespace sim {

// Executes one line; a refused line changes nothing. `at wake-up unplug` executes the rest of the
// line later, and once.
OrderResult run_usb_order(UsbPlug& plug, PrinterModel& printer, std::string_view line);

// What there is beside the orders of every simulated printer, for a help text.
std::string usb_orders_help();

}  // namespace sim
