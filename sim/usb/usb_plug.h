// The simulated printer's USB plug: in the machine or out of it, and what hosts do with it.
#pragma once

#include <asio/io_context.hpp>
#include <asio/steady_timer.hpp>
#include <chrono>
#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "sim/escape_commands.h"
#include "sim/usb/cable.h"
#include "sim/usb/host_calls.h"
#include "sim/usb/ready_pipe.h"
#include "sim/usb/testbed.h"

namespace sim {

class UsbPlug {
public:
  // Plugs it in, and says where: the folder for UMOCKDEV_DIR. What hosts send goes to the printer's
  // port on this machine. Throws std::exception when there is no folder for it.
  UsbPlug(asio::io_context& context, UsbDevice const& device, std::uint16_t printer_port);

  // False: it is plugged in, or not, already.
  bool plug();
  bool unplug();

  void stall_in(Stall how);
  void stall_out(Stall how);
  void nak_out(std::chrono::seconds time);
  void use_zero_length_packets(bool on);
  // So many bytes, all zero, that nobody has asked for; none are an empty packet.
  void send_stale(std::size_t bytes);

  // Has this done, once, when a host sends that command, and before the printer gets it.
  void at(EscapeCommand command, std::function<void()> order);

private:
  void hears(Bytes const& bytes);
  void came(UMockdevIoctlClient* client);
  void called(UMockdevIoctlClient* client);
  void went(void const* client);
  void claimed();
  void released();
  void show_ready();

  asio::io_context& io;
  std::uint16_t port_of_printer;
  UsbPort usb;
  Testbed testbed;
  std::optional<ReadyPipe> node;        // as long as it is plugged in
  std::map<void const*, bool> clients;  // whether the device has been there since they came
  std::shared_ptr<Cable> cable;
  unsigned times_unplugged = 0;
  EscapeCommandParser parser;
  std::multimap<EscapeCommand, std::function<void()>> orders;
  asio::steady_timer nak_timer;
};

}  // namespace sim
