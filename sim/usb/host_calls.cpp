// The calls with which a host's library drives a USB device, and what the kernel would answer.
#include "sim/usb/host_calls.h"

#include <linux/usbdevice_fs.h>
#include <sys/ioctl.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <memory>
#include <string_view>
#include <utility>

namespace sim {

namespace {

// What umockdev fetches from the client's memory, and writes back when the call is answered.
using Memory = std::shared_ptr<UMockdevIoctlData>;

constexpr CallResult DONE{0, 0};
constexpr CallResult failed(int error) { return {-1, error}; }

constexpr std::size_t SETUP = 8;  // bytes that a control transfer begins with
constexpr unsigned TO_HOST = 0x80;

// What the pointer at this offset points to; nothing if the client is gone.
Memory fetch(UMockdevIoctlData* data, std::size_t offset, std::size_t length)
{
  return {umockdev_ioctl_data_resolve(data, offset, length, nullptr),
          [](UMockdevIoctlData* memory) {
            if (memory != nullptr) g_object_unref(memory);
          }};
}

template <typename Struct>
Struct* as(void* memory)
{
  void* const data = static_cast<UMockdevIoctlData*>(memory)->data;
  return static_cast<Struct*>(data);
}

bool is_control(usbdevfs_urb const& urb) { return urb.type == USBDEVFS_URB_TYPE_CONTROL; }

std::span<std::uint8_t> buffer_of(usbdevfs_urb const& urb)
{
  return {static_cast<std::uint8_t*>(urb.buffer), static_cast<std::size_t>(urb.buffer_length)};
}

bool is_to_host(usbdevfs_urb const& urb)
{
  return ((is_control(urb) ? buffer_of(urb)[0] : urb.endpoint) & TO_HOST) != 0;
}

void control(UsbPort& port, Transfer transfer, std::span<std::uint8_t const> buffer)
{
  auto const reply = control_reply(port.device, buffer);
  transfer.status = reply ? 0 : -EPIPE;
  if (reply) transfer.bytes = *reply;
  if (transfer.bytes.size() > buffer.size() - SETUP) transfer.bytes.resize(buffer.size() - SETUP);
  port.pipes.finish(std::move(transfer));
}

CallResult submit(UMockdevIoctlClient* client, UsbPort& port, UMockdevIoctlData* argument)
{
  auto const memory = fetch(argument, 0, sizeof(usbdevfs_urb));
  if (!memory) return failed(EFAULT);
  auto const& urb = *as<usbdevfs_urb>(memory.get());
  auto const length = static_cast<std::size_t>(urb.buffer_length);
  if (length > 0 && !fetch(memory.get(), offsetof(usbdevfs_urb, buffer), length))
    return failed(EFAULT);
  if (is_control(urb) && length < SETUP) return failed(EINVAL);

  Transfer transfer{client, memory->client_addr, length, {}, 0, memory};
  auto const buffer = buffer_of(urb);
  if (is_control(urb)) {
    control(port, std::move(transfer), buffer);
  } else if (is_to_host(urb)) {
    port.pipes.receive(std::move(transfer));
  } else {
    transfer.bytes.assign(buffer.begin(), buffer.end());
    port.pipes.send(std::move(transfer));
  }
  return DONE;
}

// Into the memory that the client finds. Not before: umockdev's own thread writes back what an
// earlier call has fetched.
void put_result(Transfer const& transfer)
{
  auto& urb = *as<usbdevfs_urb>(transfer.memory.get());
  bool const to_host = is_to_host(urb);
  urb.status = transfer.status;
  urb.actual_length = to_host || transfer.status == 0 ? static_cast<int>(transfer.bytes.size()) : 0;
  if (to_host) {
    auto const room = buffer_of(urb).subspan(is_control(urb) ? SETUP : 0);
    std::ranges::copy(transfer.bytes, room.begin());
  }
}

CallResult reap(UMockdevIoctlClient* client, UsbPort& port, UMockdevIoctlData* argument,
                bool is_there)
{
  auto const transfer = port.pipes.take_done(client);
  if (!transfer) return failed(is_there ? EAGAIN : ENODEV);
  auto const pointer = fetch(argument, 0, sizeof(void*));
  if (!pointer) return failed(EFAULT);
  put_result(*transfer);
  umockdev_ioctl_data_set_ptr(pointer.get(), 0,
                              static_cast<UMockdevIoctlData*>(transfer->memory.get()));
  return DONE;
}

CallResult discard(UMockdevIoctlClient* client, UsbPort& port, UMockdevIoctlData* argument)
{
  gulong address = 0;
  std::memcpy(&address, argument->data, sizeof address);
  return port.pipes.end(client, address, ENOENT) ? DONE : failed(EINVAL);
}

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

CallResult clear_stalls(UsbPort& port)
{
  port.pipes.stall_in(Stall::Off);
  port.pipes.stall_out(Stall::Off);
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
    case USBDEVFS_CLEAR_HALT:
      return clear_stalls(port);
    case USBDEVFS_RESET:
      port.pipes.forget_answers();
      return clear_stalls(port);
    case USBDEVFS_SETINTERFACE:
    case USBDEVFS_SETCONFIGURATION:
      return DONE;
    default:
      return failed(ENOTTY);
  }
}

}  // namespace sim
