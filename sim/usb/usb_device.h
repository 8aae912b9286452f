// What the USB printer says of itself: its descriptors, its strings and its device ID.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>

#include "sim/printer_model.h"

namespace sim {

struct UsbDevice {
  std::string serial = "V0001";
  std::string device_id = "MFG:Velmo;MDL:Photo;CLS:PRINTER;DES:Velmo Photo;";
  bool full_speed = false;  // 12 instead of 480 Mbit/s
  bool one_way = false;     // the interface has no endpoint for answers
};

constexpr char const* USB_SYSFS = "/devices/usb1/1-1";
constexpr char const* USB_NODE = "/dev/bus/usb/001/002";

// The largest packet of its bulk endpoints, in bytes.
std::size_t packet_size(UsbDevice const& device);

// The device descriptor and the one configuration behind it, as sysfs has them.
Bytes descriptors(UsbDevice const& device);

// The device in sysfs, as umockdev takes it.
std::string sysfs_record(UsbDevice const& device);

// The answer to a request to the host's eight bytes; nothing: the device stalls.
std::optional<Bytes> control_reply(UsbDevice const& device, std::span<std::uint8_t const> setup);

}  // namespace sim
