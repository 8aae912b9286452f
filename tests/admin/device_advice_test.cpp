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
  for (char const* device :
       {"ipp://h/p", "ipps://h/p", "lpd://h/p", "file:///dev/null", "http://h"})
    EXPECT_NE(device_without_answers(device).find(std::string(device).substr(0, 4)),
              std::string::npos)
        << device;
}

TEST(DeviceAdvice, OfUnknownOnesNothingIsSaidForSure)
{
  for (char const* device : {"dnssd://X._pdl-datastream._tcp.local/", "beh:/1/3/5/socket://h"})
    EXPECT_NE(device_without_answers(device).find("may pass no answers"), std::string::npos)
        << device;
  EXPECT_EQ(device_without_answers("file:///dev/null").find("may"), std::string::npos);
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
