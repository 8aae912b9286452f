// What is worth knowing about a queue's device before its printer is asked.
#include "admin/device_advice.h"

#include <algorithm>
#include <array>

namespace {

// The backends that hand a printer's answers to a filter as they come.
constexpr auto ANSWERING = std::to_array<std::string_view>({"socket", "usb", "serial", "parallel"});
// Those that are known not to. Others may, as dnssd does for a printer that listens like socket.
constexpr auto SILENT =
    std::to_array<std::string_view>({"ipp", "ipps", "http", "https", "lpd", "file"});

template <std::size_t COUNT>
bool is_one_of(std::array<std::string_view, COUNT> const& schemes, std::string_view scheme)
{
  return std::ranges::find(schemes, scheme) != schemes.end();
}

}  // namespace

std::string device_without_answers(std::string_view device)
{
  std::string_view const scheme = device.substr(0, device.find(':'));
  if (is_one_of(ANSWERING, scheme)) return {};
  std::string const backend = "the backend of a device " + std::string(scheme) + ": ";
  if (is_one_of(SILENT, scheme))
    return backend
           + "passes no answers of the printer on, so neither level nor errors can be had; "
             "socket: and usb: do";
  return backend + "may pass no answers of the printer on; socket: and usb: do";
}

std::string device_without_snmp(std::string_view device)
{
  constexpr std::string_view SCHEME = "socket://";
  if (!device.starts_with(SCHEME) || device.find("snmp=") != std::string_view::npos) return {};
  std::string changed(device);
  if (device.find('?') != std::string_view::npos) return changed + "&snmp=false";
  // With a port, the scheduler takes options only behind a slash.
  if (device.find('/', SCHEME.size()) == std::string_view::npos) changed += '/';
  return changed + "?snmp=false";
}
