// What is worth knowing about a queue's device before its printer is asked.
#pragma once

#include <string>
#include <string_view>

// Why the device gives no answers; empty for one that does.
std::string device_without_answers(std::string_view device);

// The device with SNMP switched off; empty if it is no matter there, or is switched already.
std::string device_without_snmp(std::string_view device);
