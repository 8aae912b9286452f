// The descriptors and strings of the simulated USB printer, byte by byte.
#include "sim/usb/usb_device.h"

#include <gtest/gtest.h>

#include <array>
#include <cstdint>

using sim::Bytes;
using sim::control_reply;
using sim::UsbDevice;

namespace {

Bytes const DEVICE{18, 1, 0, 2, 0, 0, 0, 64, 0x09, 0x12, 0x01, 0x00, 0, 1, 1, 2, 3, 1};

Bytes with_device(Bytes const& rest)
{
  Bytes all = DEVICE;
  all.insert(all.end(), rest.begin(), rest.end());
  return all;
}

using Request = std::array<std::uint8_t, 8>;

}  // namespace

TEST(UsbDevice, IsAPrinterOfTwoWaysAtHighSpeed)
{
  EXPECT_EQ(sim::descriptors({}), with_device({9, 2, 32,   0, 1, 1, 0, 0xc0, 1,  //
                                               9, 4, 0,    0, 2, 7, 1, 2,    0,  //
                                               7, 5, 0x01, 2, 0, 2, 0,           //
                                               7, 5, 0x82, 2, 0, 2, 0}));
}

TEST(UsbDevice, HasPacketsOf64BytesAtFullSpeed)
{
  UsbDevice device;
  device.full_speed = true;
  EXPECT_EQ(sim::packet_size(device), 64U);
  EXPECT_EQ(sim::descriptors(device), with_device({9, 2, 32,   0, 1,  1, 0, 0xc0, 1,  //
                                                   9, 4, 0,    0, 2,  7, 1, 2,    0,  //
                                                   7, 5, 0x01, 2, 64, 0, 0,           //
                                                   7, 5, 0x82, 2, 64, 0, 0}));
}

TEST(UsbDevice, HasNoEndpointForAnswersWhenItIsOneWay)
{
  UsbDevice device;
  device.one_way = true;
  EXPECT_EQ(sim::descriptors(device), with_device({9, 2, 25,   0, 1, 1, 0, 0xc0, 1,  //
                                                   9, 4, 0,    0, 1, 7, 1, 1,    0,  //
                                                   7, 5, 0x01, 2, 0, 2, 0}));
}

TEST(UsbDevice, TellsItsDeviceIdBehindItsLength)
{
  UsbDevice device;
  device.device_id = "MDL:X;";
  EXPECT_EQ(control_reply(device, Request{0xa1, 0}), (Bytes{0, 8, 'M', 'D', 'L', ':', 'X', ';'}));
}

TEST(UsbDevice, TellsItsSerialNumberInTwoBytesForEachCharacter)
{
  UsbDevice device;
  device.serial = "V2";
  EXPECT_EQ(control_reply(device, Request{0x80, 6, 3, 3}), (Bytes{6, 3, 'V', 0, '2', 0}));
}

TEST(UsbDevice, StallsWhatItDoesNotKnow)
{
  EXPECT_FALSE(control_reply({}, Request{0x80, 6, 4, 3}));
  EXPECT_FALSE(control_reply({}, Request{0xa1, 1}));
  EXPECT_FALSE(control_reply({}, Bytes{0xa1, 0}));
}

TEST(UsbDevice, StandsInSysfsWithItsDescriptorsInHexDigits)
{
  auto const record = sim::sysfs_record({});
  EXPECT_NE(record.find("A: speed=480\\n\n"), std::string::npos) << record;
  EXPECT_NE(record.find("H: descriptors=120100020000004009120100000101020301"), std::string::npos)
      << record;
}
