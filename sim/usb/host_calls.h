// The calls with which a host's library drives a USB device, and what the kernel would answer.
#pragma once

#include <umockdev.h>

#include <functional>

#include "sim/usb/bulk_pipes.h"
#include "sim/usb/usb_device.h"

namespace sim {

// The device as the kernel has it.
struct UsbPort {
  UsbDevice device;
  BulkPipes pipes;
  bool has_kernel_driver = true;     // usblp, until a host takes its place
  void const* claimed_by = nullptr;  // the client that has the interface
  std::function<void()> on_claimed;
  std::function<void()> on_released;
};

struct CallResult {
  long value;
  int error;  // 0, or the error number
};

// Answers the call for which the client waits. `is_there`: the device is plugged in, and has not
// been away since the client opened it.
CallResult answer_call(UMockdevIoctlClient* client, UsbPort& port, bool is_there);

// The client gives the interface back, or has gone.
void release_interface(void const* client, UsbPort& port);

}  // namespace sim
