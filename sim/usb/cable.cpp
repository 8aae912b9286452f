// The way between the USB plug and the printer behind it: one connection to the printer's port for
// each time that a host has the device.
#include "sim/usb/cable.h"

#include <asio/buffer.hpp>
#include <asio/ip/address_v4.hpp>
#include <asio/write.hpp>
#include <utility>

namespace sim {

Cable::Cable(asio::io_context& io, std::function<void(Bytes const&)> answered)
    : socket(io), on_answered(std::move(answered))
{
}

void Cable::start(std::uint16_t port)
{
  asio::error_code ignored;
  socket.connect({asio::ip::address_v4::loopback(), port}, ignored);
  socket.set_option(asio::ip::tcp::no_delay(true), ignored);
  read();
}

void Cable::read()
{
  socket.async_read_some(asio::buffer(received), [this, self = shared_from_this()](
                                                     asio::error_code error, std::size_t size) {
    if (error || !socket.is_open()) return;
    on_answered(Bytes(received.data(), received.data() + size));
    read();
  });
}

void Cable::send(Bytes const& bytes)
{
  if (bytes.empty()) return;
  unsent.push_back(bytes);
  if (unsent.size() == 1) write();
}

void Cable::write()
{
  asio::async_write(socket, asio::buffer(unsent.front()),
                    [this, self = shared_from_this()](asio::error_code error, std::size_t) {
                      if (error) return unsent.clear();
                      unsent.pop_front();
                      if (!unsent.empty()) return write();
                      if (has_ended) end();
                    });
}

void Cable::end()
{
  has_ended = true;
  asio::error_code ignored;
  if (unsent.empty()) socket.shutdown(asio::ip::tcp::socket::shutdown_send, ignored);
}

void Cable::cut()
{
  asio::error_code ignored;
  socket.close(ignored);
}

}  // namespace sim
