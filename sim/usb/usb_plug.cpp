// The simulated printer's USB plug: in the machine or out of it, and what hosts do with it.
#include "sim/usb/usb_plug.h"

#include <asio/post.hpp>
#include <cerrno>
#include <utility>

#include "sim/message.h"

namespace sim {

UsbPlug::UsbPlug(asio::io_context& context, UsbDevice const& device, std::uint16_t printer_port)
    : io(context),
      port_of_printer(printer_port),
      usb{device,
          BulkPipes(
              packet_size(device), [this](Bytes const& bytes) { hears(bytes); },
              [this](Bytes const& bytes) {
                if (cable) cable->send(bytes);
              }),
          true,
          nullptr,
          [this] { claimed(); },
          [this] { released(); }},
      testbed(context, {[this](UMockdevIoctlClient* client) { came(client); },
                        [this](UMockdevIoctlClient* client) { called(client); },
                        [this](void const* client) { went(client); }}),
      nak_timer(context)
{
  plug();
  say("plugged in at " + testbed.folder());
}

bool UsbPlug::plug()
{
  if (node) return false;
  testbed.add(usb.device);
  node.emplace(testbed.folder() + USB_NODE);
  usb.has_kernel_driver = true;
  return true;
}

bool UsbPlug::unplug()
{
  if (!node) return false;
  ++times_unplugged;
  for (auto& [client, is_there] : clients) {
    is_there = false;
    usb.pipes.end_all(client, ESHUTDOWN);
  }
  if (cable) cable->cut();
  cable.reset();
  usb.claimed_by = nullptr;
  usb.pipes.forget_answers();
  node->show(true);
  node.reset();
  testbed.remove();
  return true;
}

void UsbPlug::stall_in(Stall how)
{
  usb.pipes.stall_in(how);
  show_ready();
}

void UsbPlug::stall_out(Stall how)
{
  usb.pipes.stall_out(how);
  show_ready();
}

void UsbPlug::nak_out(std::chrono::seconds time)
{
  usb.pipes.refuse_out(time.count() > 0);
  show_ready();
  nak_timer.expires_after(time);
  nak_timer.async_wait([this](asio::error_code error) {
    if (error) return;
    say("takes what waited");
    usb.pipes.refuse_out(false);
    show_ready();
  });
}

void UsbPlug::use_zero_length_packets(bool on) { usb.pipes.use_zero_length_packets(on); }

void UsbPlug::send_stale(std::size_t bytes)
{
  usb.pipes.answer(Bytes(bytes));
  show_ready();
}

void UsbPlug::at(EscapeCommand command, std::function<void()> order)
{
  orders.emplace(command, std::move(order));
}

void UsbPlug::hears(Bytes const& bytes)
{
  for (auto const& heard : parser.feed(bytes)) {
    auto waiting = orders.extract(heard.command);
    if (!waiting.empty()) waiting.mapped()();
  }
}

void UsbPlug::came(UMockdevIoctlClient* client) { clients[client] = node.has_value(); }

void UsbPlug::called(UMockdevIoctlClient* client)
{
  auto const result = answer_call(client, usb, clients[client]);
  umockdev_ioctl_client_complete(client, result.value, result.error);
  show_ready();
}

// Also one that was killed: the kernel closes its node.
void UsbPlug::went(void const* client)
{
  release_interface(client, usb);
  usb.pipes.forget(client);
  clients.erase(client);
  show_ready();
}

void UsbPlug::claimed()
{
  say("claimed by a host");
  parser = {};
  // A host that has gone leaves the printer answering what it asked, until the plug is pulled.
  cable = std::make_shared<Cable>(io, [this, since = times_unplugged](Bytes const& bytes) {
    if (since != times_unplugged) return;
    usb.pipes.answer(bytes);
    show_ready();
  });
  cable->start(port_of_printer);
}

void UsbPlug::released()
{
  say("released by the host");
  if (cable) cable->end();
  cable.reset();
}

void UsbPlug::show_ready()
{
  if (node) node->show(usb.pipes.has_done());
}

}  // namespace sim
