// The printer's two bulk endpoints: the host's transfers wait here for the printer's bytes.
#include "sim/usb/bulk_pipes.h"

#include <algorithm>
#include <cerrno>
#include <utility>

namespace sim {

namespace {

// Whether the transfer at hand stalls; one that stalls once does not do so again.
bool take_stall(Stall& stall)
{
  bool const stalls = stall != Stall::Off;
  if (stall == Stall::Once) stall = Stall::Off;
  return stalls;
}

}  // namespace

BulkPipes::BulkPipes(std::size_t packet, Callback coming, Callback heard)
    : packet_size(packet), on_coming(std::move(coming)), on_heard(std::move(heard))
{
}

void BulkPipes::send(Transfer transfer)
{
  Bytes const bytes = transfer.bytes;
  sending.push_back(std::move(transfer));
  on_coming(bytes);  // which may pull the plug
  move_out();
}

void BulkPipes::receive(Transfer transfer)
{
  receiving.push_back(std::move(transfer));
  move_in();
}

void BulkPipes::finish(Transfer transfer) { done.push_back(std::move(transfer)); }

std::optional<Transfer> BulkPipes::take_done(void const* client)
{
  auto const found = std::ranges::find(done, client, &Transfer::client);
  if (found == done.end()) return {};
  Transfer transfer = std::move(*found);
  done.erase(found);
  return transfer;
}

void BulkPipes::answer(Bytes const& bytes)
{
  std::size_t last = 0;
  for (auto start = bytes.begin(); start != bytes.end();
       start += static_cast<std::ptrdiff_t>(last)) {
    last = std::min(packet_size, static_cast<std::size_t>(bytes.end() - start));
    packets.emplace_back(start, start + static_cast<std::ptrdiff_t>(last));
  }
  // What ends with a packet that is not full needs no empty one to show its end.
  if (bytes.empty() || (zero_length_packets && last == packet_size)) packets.emplace_back();
  move_in();
}

bool BulkPipes::end(void const* client, std::uint64_t address, int error)
{
  for (auto* waiting : {&sending, &receiving}) {
    auto const found = std::ranges::find_if(*waiting, [&](Transfer const& transfer) {
      return transfer.client == client && transfer.address == address;
    });
    if (found == waiting->end()) continue;
    found->status = -error;
    done.splice(done.end(), *waiting, found);
    return true;
  }
  return false;
}

void BulkPipes::end_all(void const* client, int error)
{
  for (auto* waiting : {&sending, &receiving}) {
    for (auto const& transfer : std::list<Transfer>(*waiting)) {
      if (transfer.client == client) end(client, transfer.address, error);
    }
  }
}

void BulkPipes::forget(void const* client)
{
  for (auto* transfers : {&sending, &receiving, &done})
    transfers->remove_if([&](Transfer const& transfer) { return transfer.client == client; });
}

void BulkPipes::stall_in(Stall how)
{
  in = how;
  move_in();
}

void BulkPipes::stall_out(Stall how)
{
  out = how;
  move_out();
}

void BulkPipes::refuse_out(bool on)
{
  refuses_out = on;
  move_out();
}

void BulkPipes::move_out()
{
  while (!sending.empty() && !refuses_out) {
    if (take_stall(out)) {
      finish_first(sending, -EPIPE);
      continue;
    }
    Bytes const bytes = sending.front().bytes;
    finish_first(sending, 0);
    on_heard(bytes);
  }
}

// A transfer ends with a packet that is not full, or when there is no room for another.
void BulkPipes::move_in()
{
  while (!receiving.empty()) {
    auto& transfer = receiving.front();
    if (take_stall(in)) {
      finish_first(receiving, -EPIPE);
      continue;
    }
    if (packets.empty()) return;
    Bytes const packet = packets.front();
    if (packet.size() > transfer.length - transfer.bytes.size()) {
      finish_first(receiving, -EOVERFLOW);
      continue;
    }
    packets.pop_front();
    transfer.bytes.insert(transfer.bytes.end(), packet.begin(), packet.end());
    if (packet.size() < packet_size || transfer.bytes.size() == transfer.length)
      finish_first(receiving, 0);
  }
}

void BulkPipes::finish_first(std::list<Transfer>& waiting, int status)
{
  waiting.front().status = status;
  done.splice(done.end(), waiting, waiting.begin());
}

}  // namespace sim
