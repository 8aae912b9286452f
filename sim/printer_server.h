// The printer's TCP port: serves every connection, any number at the same time.
#pragma once

#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>
#include <cstdint>

#include "sim/printer_model.h"

namespace sim {

class PrinterServer {
public:
  // Listens on 127.0.0.1 and says on which port; port 0 picks a free one. Throws
  // std::system_error when the port cannot be had.
  // REQUIRES: `model` outlives the server and its connections.
  PrinterServer(asio::io_context& io, std::uint16_t port, PrinterModel& model);

  [[nodiscard]] std::uint16_t port() const { return acceptor.local_endpoint().port(); }

private:
  void accept();

  asio::ip::tcp::acceptor acceptor;
  PrinterModel& printer;
};

}  // namespace sim
