#include "admin/device_advice.h"

#include <gtest/gtest.h>

TEST(DeviceAdvice, SocketAndUsbGiveAnswers)
{
  for (char const* device :
       {"socket://h", "usb://Velmo/X", "serial:/dev/ttyS0", "parallel:/dev/lp0"})
    EXPECT_EQ(device_without_answers(device), "") << device;
}

TEST(DeviceAdvice, OthersAreNamed)
{
  for (std::string const scheme : {"ipp", "ipps", "http", "https", "lpd", "file"})
    EXPECT_EQ(device_without_answers(scheme + "://h/p"),
              "the backend of a device " + scheme
                  + ": passes no answers of the printer on, so neither level nor errors can be "
                    "had; socket: and usb: do");
}

TEST(DeviceAdvice, OfUnknownOnesNothingIsSaidForSure)
{
  for (std::string const scheme : {"dnssd", "beh"})
    EXPECT_EQ(device_without_answers(scheme + ":/1/3/5/socket://h"),
              "the backend of a device " + scheme
                  + ": may pass no answers of the printer on; socket: and usb: do");
}

TEST(DeviceAdvice, SnmpIsSwitchedOffBehindASlash)
{
  EXPECT_EQ(device_without_snmp("socket://h"), "socket://h/?snmp=false");
  EXPECT_EQ(device_without_snmp("socket://h:9100"), "socket://h:9100/?snmp=false");
  EXPECT_EQ(device_without_snmp("socket://h/"), "socket://h/?snmp=false");
  EXPECT_EQ(device_without_snmp("socket://h/?waiteof=no"), "socket://h/?waiteof=no&snmp=false");
}

TEST(DeviceAdvice, NothingIsSaidWhereItIsNoMatter)
{
  EXPECT_EQ(device_without_snmp("socket://h/?snmp=true"), "");
  EXPECT_EQ(device_without_snmp("usb://h"), "");
}
