// The printer's TCP port: serves every connection, any number at the same time.
#include "sim/printer_server.h"

#include <asio/ip/address_v4.hpp>
#include <memory>
#include <system_error>
#include <utility>

#include "sim/connection.h"
#include "sim/message.h"

namespace sim {

namespace {

void expect_port(asio::error_code error, std::uint16_t port)
{
  if (error) throw std::system_error(error, "port " + std::to_string(port));
}

}  // namespace

PrinterServer::PrinterServer(asio::io_context& io, std::uint16_t port, PrinterModel& model,
                             std::string name)
    : acceptor(io), printer(model), printer_name(std::move(name))
{
  bind(port);
  switch_on();
  say("listening on 127.0.0.1:" + std::to_string(this->port()));
}

// A port that is bound but not listened on refuses connections, and nobody else gets it.
void PrinterServer::switch_off()
{
  auto const port = acceptor.local_endpoint().port();
  acceptor.close();
  bind(port);
  is_on = false;
}

void PrinterServer::switch_on()
{
  if (is_on) return;
  asio::error_code error;
  acceptor.listen(asio::socket_base::max_listen_connections, error);
  expect_port(error, acceptor.local_endpoint().port());
  is_on = true;
  accept();
}

void PrinterServer::bind(std::uint16_t port)
{
  asio::error_code error;
  acceptor.open(asio::ip::tcp::v4(), error);
  if (!error) acceptor.set_option(asio::socket_base::reuse_address(true), error);
  if (!error) acceptor.bind({asio::ip::address_v4::loopback(), port}, error);
  expect_port(error, port);
}

void PrinterServer::accept()
{
  acceptor.async_accept([this](asio::error_code error, asio::ip::tcp::socket peer) {
    if (error == asio::error::operation_aborted || !is_on) return;
    if (!error) std::make_shared<Connection>(std::move(peer), printer, printer_name)->start();
    accept();
  });
}

}  // namespace sim
