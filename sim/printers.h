// Several printers in one process, each with a state and a port of its own.
#pragma once

#include <asio/io_context.hpp>
#include <cstdint>
#include <deque>
#include <string>
#include <string_view>

#include "sim/orders.h"
#include "sim/printer_model.h"
#include "sim/printer_server.h"

namespace sim {

class Printers {
public:
  // So many printers like this one, on ports that follow each other; port 0 picks a free one for
  // each. They are numbered from 1, and listen in this order. Throws std::system_error when a port
  // cannot be had.
  Printers(asio::io_context& io, std::uint16_t port, PrinterModel const& like, std::uint16_t count);

  // Executes one line. It is for the printer whose number stands in front, `7 remaining 3`, and
  // without a number for all. Throws std::system_error when a printer that is switched on has lost
  // its port.
  OrderResult run(std::string_view line);

private:
  struct Printer {
    Printer(asio::io_context& io, std::uint16_t port, PrinterModel like, std::string name);

    PrinterModel model;
    PrinterServer server;
  };

  static OrderResult run_at(Printer& printer, std::string_view order);
  OrderResult run_numbered(std::string_view line);

  std::deque<Printer> printers;  // which stay where they are
};

}  // namespace sim
