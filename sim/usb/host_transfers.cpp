// The transfers that a host's library has under way: submitted, taken back when done, or discarded.
#include "sim/usb/host_transfers.h"

#include <linux/usbdevice_fs.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <span>
#include <utility>

#include "sim/usb/host_memory.h"

namespace sim {

namespace {

constexpr std::size_t SETUP = 8;  // bytes that a control transfer begins with
constexpr unsigned TO_HOST = 0x80;

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

}  // namespace

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

}  // namespace sim
