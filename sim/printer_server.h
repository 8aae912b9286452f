// The printer's TCP port: serves every connection, any number at the same time.
#pragma once

#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>
#include <cstdint>
#include <string>

#include "sim/printer_model.h"

namespace sim {

class PrinterServer {
public:
  // Listens on 127.0.0.1 and says on which port; port 0 picks a free one. Throws
  // std::system_error, which names the port, when it cannot be had. What happens on a connection is
  // told with the printer's name in front, if it has one.
  // REQUIRES: `model` outlives the server and its connections.
  PrinterServer(asio::io_context& io, std::uint16_t port, PrinterModel& model,
                std::string name = "");

  // Off, it refuses connections; those that are open stay. Both are harmless when it is so already.
  void switch_off();
  void switch_on();

  [[nodiscard]] std::uint16_t port() const { return acceptor.local_endpoint().port(); }

private:
  void bind(std::uint16_t port);
  void accept();

  asio::ip::tcp::acceptor acceptor;
  PrinterModel& printer;
  std::string printer_name;
  bool is_on = false;
};

}  // namespace sim
