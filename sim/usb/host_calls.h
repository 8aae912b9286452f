// The calls with which a host's library drives a USB device, and what the kernel would answer.
#pragma once

#include <umockdev.h>

#include "sim/usb/usb_port.h"

namespace sim {

// Answers the call for which the client waits. `is_there`: the device is plugged in, and has not
// been away since the client opened it.
CallResult answer_call(UMockdevIoctlClient* client, UsbPort& port, bool is_there);

// The client gives the interface back, or has gone.
void release_interface(void const* client, UsbPort& port);

}  // namespace sim
