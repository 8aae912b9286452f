// The transfers that a host's library has under way: submitted, taken back when done, or discarded.
#pragma once

#include <umockdev.h>

#include "sim/usb/usb_port.h"

namespace sim {

CallResult submit(UMockdevIoctlClient* client, UsbPort& port, UMockdevIoctlData* argument);

// `is_there`: see answer_call.
CallResult reap(UMockdevIoctlClient* client, UsbPort& port, UMockdevIoctlData* argument,
                bool is_there);

CallResult discard(UMockdevIoctlClient* client, UsbPort& port, UMockdevIoctlData* argument);

}  // namespace sim
