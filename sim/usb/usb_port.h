// The device as the kernel has it, and what the kernel answers.
#pragma once

#include <functional>

#include "sim/usb/bulk_pipes.h"
#include "sim/usb/usb_device.h"

namespace sim {

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

constexpr CallResult DONE{0, 0};
constexpr CallResult failed(int error) { return {-1, error}; }

}  // namespace sim
