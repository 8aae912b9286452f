// The machine into which the simulated USB printer is plugged: a folder of umockdev, which programs
// see in place of /sys and /dev, and whose calls on the device's node come here.
#pragma once

#include <umockdev.h>

#include <asio/io_context.hpp>
#include <functional>
#include <string>

#include "sim/usb/usb_device.h"

namespace sim {

class Testbed {
public:
  // What programs do that have the node open. Called in the thread of `io`, while the program
  // waits; of one that has gone only the address is left.
  struct Callbacks {
    std::function<void(UMockdevIoctlClient*)> came;
    std::function<void(UMockdevIoctlClient*)> called;
    std::function<void(void const*)> went;
  };

  Testbed(asio::io_context& context, Callbacks what);
  ~Testbed();

  Testbed(Testbed const&) = delete;
  Testbed& operator=(Testbed const&) = delete;

  [[nodiscard]] std::string const& folder() const { return root; }

  // Throws std::runtime_error when umockdev refuses the device.
  void add(UsbDevice const& device);
  void remove();

private:
  void in_printers_thread(std::function<void()> const& work);

  static void on_connected(UMockdevIoctlBase* handler, UMockdevIoctlClient* client, void* self);
  static gboolean on_call(UMockdevIoctlBase* handler, UMockdevIoctlClient* client, void* self);
  static void on_gone(void* self, GObject* client);

  asio::io_context& io;
  Callbacks callbacks;
  UMockdevTestbed* bed;
  UMockdevIoctlBase* calls;
  std::string root;
};

}  // namespace sim
