// The calls with which a host's library drives a USB device, and what the kernel would answer.
#include "sim/usb/host_calls.h"

#include <linux/usbdevice_fs.h>
#include <sys/ioctl.h>

#include <cerrno>
#include <string_view>

#include "sim/usb/host_memory.h"
#include "sim/usb/host_transfers.h"

namespace sim {

namespace {

CallResult tell_capabilities(UMockdevIoctlData* argument)
{
  auto const memory = fetch(argument, 0, sizeof(guint32));
  if (!memory) return failed(EFAULT);
  *as<guint32>(memory.get()) = USBDEVFS_CAP_ZERO_PACKET | USBDEVFS_CAP_BULK_CONTINUATION
                               | USBDEVFS_CAP_NO_PACKET_SIZE_LIM | USBDEVFS_CAP_BULK_SCATTER_GATHER
                               | USBDEVFS_CAP_REAP_AFTER_DISCONNECT;
  return DONE;
}

CallResult tell_driver(UsbPort const& port, UMockdevIoctlData* argument)
{
  if (!port.has_kernel_driver && port.claimed_by == nullptr) return failed(ENODATA);
  auto const memory = fetch(argument, 0, sizeof(usbdevfs_getdriver));
  if (!memory) return failed(EFAULT);
  std::string_view const name = port.has_kernel_driver ? "usblp" : "usbfs";
  auto& driver = as<usbdevfs_getdriver>(memory.get())->driver;
  driver[name.copy(driver, sizeof driver - 1)] = '\0';
  return DONE;
}

CallResult change_driver(UsbPort& port, UMockdevIoctlData* argument)
{
  auto const memory = fetch(argument, 0, sizeof(usbdevfs_ioctl));
  if (!memory) return failed(EFAULT);
  auto const code = static_cast<unsigned>(as<usbdevfs_ioctl>(memory.get())->ioctl_code);
  if (code == USBDEVFS_DISCONNECT) {
    if (!port.has_kernel_driver) return failed(ENODATA);
    port.has_kernel_driver = false;
    return DONE;
  }
  if (code != USBDEVFS_CONNECT) return failed(ENOTTY);
  port.has_kernel_driver = port.claimed_by == nullptr;
  return {1, 0};
}

CallResult claim(void const* client, UsbPort& port)
{
  if (port.claimed_by == client) return DONE;
  if (port.has_kernel_driver || port.claimed_by != nullptr) return failed(EBUSY);
  port.claimed_by = client;
  port.on_claimed();
  return DONE;
}

}  // namespace

void release_interface(void const* client, UsbPort& port)
{
  if (port.claimed_by != client) return;
  port.pipes.end_all(client, ENOENT);
  port.claimed_by = nullptr;
  port.on_released();
}

CallResult answer_call(UMockdevIoctlClient* client, UsbPort& port, bool is_there)
{
  auto const request = umockdev_ioctl_client_get_request(client);
  auto* const argument = umockdev_ioctl_client_get_arg(client);
  // What was under way when the device went can still be taken.
  if (request == USBDEVFS_REAPURB || request == USBDEVFS_REAPURBNDELAY)
    return reap(client, port, argument, is_there);
  if (request == USBDEVFS_DISCARDURB) return discard(client, port, argument);
  if (!is_there) return failed(ENODEV);

  switch (request) {
    case USBDEVFS_GET_CAPABILITIES:
      return tell_capabilities(argument);
    case USBDEVFS_GETDRIVER:
      return tell_driver(port, argument);
    case USBDEVFS_IOCTL:
      return change_driver(port, argument);
    case USBDEVFS_CLAIMINTERFACE:
      return claim(client, port);
    case USBDEVFS_RELEASEINTERFACE:
      release_interface(client, port);
      return DONE;
    case USBDEVFS_SUBMITURB:
      return submit(client, port, argument);
    case USBDEVFS_RESET:
      port.pipes.forget_answers();
      return DONE;
    // A stall that happens once has ended with the call that it failed, and one that is on stays
    // on.
    case USBDEVFS_CLEAR_HALT:
    case USBDEVFS_SETINTERFACE:
    case USBDEVFS_SETCONFIGURATION:
      return DONE;
    default:
      return failed(ENOTTY);
  }
}

}  // namespace sim
