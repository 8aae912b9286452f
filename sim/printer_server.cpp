// The printer's TCP port: serves every connection, any number at the same time.
#include "sim/printer_server.h"

#include <asio/ip/address_v4.hpp>
#include <memory>
#include <string>
#include <utility>

#include "sim/connection.h"
#include "sim/message.h"

namespace sim {

PrinterServer::PrinterServer(asio::io_context& io, std::uint16_t port, PrinterModel& model)
    : acceptor(io, {asio::ip::address_v4::loopback(), port}), printer(model)
{
  say("listening on 127.0.0.1:" + std::to_string(this->port()));
  accept();
}

void PrinterServer::accept()
{
  acceptor.async_accept([this](asio::error_code error, asio::ip::tcp::socket peer) {
    if (!error) std::make_shared<Connection>(std::move(peer), printer)->start();
    accept();
  });
}

}  // namespace sim
