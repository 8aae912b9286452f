// What the USB printer says of itself: its descriptors, its strings and its device ID.
#include "sim/usb/usb_device.h"

#include <algorithm>
#include <string_view>

#include "sim/setting_text.h"

namespace sim {

namespace {

constexpr std::uint8_t PRINTER_CLASS = 7;
constexpr std::uint8_t ONE_WAY = 1;
constexpr std::uint8_t TWO_WAY = 2;
constexpr std::uint8_t BULK = 2;

std::uint8_t low(std::size_t number) { return static_cast<std::uint8_t>(number & 0xff); }
std::uint8_t high(std::size_t number) { return static_cast<std::uint8_t>(number >> 8); }

void append(Bytes& bytes, Bytes const& more)
{
  bytes.insert(bytes.end(), more.begin(), more.end());
}

Bytes endpoint(std::uint8_t address, std::size_t size)
{
  return {7, 5, address, BULK, low(size), high(size), 0};
}

Bytes string_descriptor(std::string_view text)
{
  Bytes bytes{low(2 + 2 * text.size()), 3};
  for (char const c : text) append(bytes, {static_cast<std::uint8_t>(c), 0});
  return bytes;
}

// The strings by the numbers in the device descriptor; 0 lists the languages, English alone.
std::optional<Bytes> string_reply(UsbDevice const& device, std::uint8_t index)
{
  switch (index) {
    case 0:
      return Bytes{4, 3, 9, 4};
    case 1:
      return string_descriptor("Velmo");
    case 2:
      return string_descriptor("Photo");
    case 3:
      return string_descriptor(device.serial);
    default:
      return {};
  }
}

Bytes device_id_reply(std::string const& device_id)
{
  auto const length = device_id.size() + 2;
  Bytes bytes{high(length), low(length)};
  bytes.insert(bytes.end(), device_id.begin(), device_id.end());
  return bytes;
}

}  // namespace

std::size_t packet_size(UsbDevice const& device) { return device.full_speed ? 64 : 512; }

Bytes descriptors(UsbDevice const& device)
{
  Bytes interface {
    9, 4, 0, 0, 2, PRINTER_CLASS, 1, TWO_WAY, 0
  };
  append(interface, endpoint(0x01, packet_size(device)));
  if (device.one_way) {
    interface[4] = 1;
    interface[7] = ONE_WAY;
  } else {
    append(interface, endpoint(0x82, packet_size(device)));
  }
  // 1209:0001 is free for tests.
  Bytes all{18, 1, 0, 2, 0, 0, 0, 64, 0x09, 0x12, 0x01, 0x00, 0, 1, 1, 2, 3, 1};
  append(all, {9, 2, low(9 + interface.size()), 0, 1, 1, 0, 0xc0, 1});
  append(all, interface);
  return all;
}

std::string sysfs_record(UsbDevice const& device)
{
  std::string hex = to_text(std::span<std::uint8_t const>(descriptors(device)));
  std::erase(hex, ' ');
  std::ranges::transform(hex, hex.begin(), [](char c) { return c >= 'a' ? c - 'a' + 'A' : c; });
  return std::string("P: ") + USB_SYSFS + "\nN: " + (USB_NODE + 5)
         + "\nE: SUBSYSTEM=usb\nE: DRIVER=usb\nE: BUSNUM=001\nE: DEVNUM=002\nE: DEVNAME=" + USB_NODE
         + "\nE: DEVTYPE=usb_device\nE: MAJOR=189\nE: MINOR=1\nE: PRODUCT=1209/1/100\n"
           "A: bConfigurationValue=1\\n\nA: busnum=1\\n\nA: devnum=2\\n\nA: speed="
         + (device.full_speed ? "12" : "480") + "\\n\nH: descriptors=" + hex + "\n";
}

std::optional<Bytes> control_reply(UsbDevice const& device, std::span<std::uint8_t const> setup)
{
  if (setup.size() < 8) return {};
  constexpr int FROM_DEVICE = 0x80;
  constexpr int FROM_PRINTER_CLASS = 0xa1;
  constexpr int GET_DEVICE_ID = 0;
  constexpr int GET_DESCRIPTOR = 6;
  constexpr int STRING = 3;
  constexpr int GET_CONFIGURATION = 8;

  if (setup[0] == FROM_PRINTER_CLASS && setup[1] == GET_DEVICE_ID)
    return device_id_reply(device.device_id);
  if (setup[0] == FROM_DEVICE && setup[1] == GET_CONFIGURATION) return Bytes{1};
  if (setup[0] == FROM_DEVICE && setup[1] == GET_DESCRIPTOR && setup[3] == STRING)
    return string_reply(device, setup[2]);
  return {};
}

}  // namespace sim
