// The way between the USB plug and the printer behind it: one connection to the printer's port for
// each time that a host has the device.
#pragma once

#include <array>
#include <asio/io_context.hpp>
#include <asio/ip/tcp.hpp>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <memory>

#include "sim/printer_model.h"

namespace sim {

// Lives as long as the printer may still answer.
class Cable : public std::enable_shared_from_this<Cable> {
public:
  Cable(asio::io_context& io, std::function<void(Bytes const&)> answered);

  void start(std::uint16_t port);
  void send(Bytes const& bytes);
  // The host has nothing more to say; what the printer still answers comes nevertheless.
  void end();
  // Nothing comes through any more.
  void cut();

private:
  void read();
  void write();

  asio::ip::tcp::socket socket;
  std::function<void(Bytes const&)> on_answered;
  std::array<std::uint8_t, 4096> received{};
  std::deque<Bytes> unsent;  // the first is being sent
  bool has_ended = false;
};

}  // namespace sim
