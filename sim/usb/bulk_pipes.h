// The printer's two bulk endpoints: the host's transfers wait here for the printer's bytes.
#pragma once

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <list>
#include <memory>
#include <optional>

#include "sim/printer_model.h"

namespace sim {

// What the host has asked for, and what came of it.
struct Transfer {
  void const* client = nullptr;  // whose it is
  std::uint64_t address = 0;     // the client's name for it
  std::size_t length = 0;        // bytes that there are to send, or room to receive
  Bytes bytes;                   // those to send, or those received so far
  int status = 0;                // once done: 0, or an error number below 0
  std::shared_ptr<void> memory;  // where the client finds the result
};

enum class Stall { Off, Once, On };

class BulkPipes {
public:
  using Callback = std::function<void(Bytes const&)>;

  // `coming` sees what the host sends before anything is done with it, `heard` what the printer
  // has taken.
  BulkPipes(std::size_t packet, Callback coming, Callback heard);

  void send(Transfer transfer);     // from the host
  void receive(Transfer transfer);  // by the host
  void finish(Transfer transfer);   // of another endpoint

  // The transfer of the client that was done first.
  std::optional<Transfer> take_done(void const* client);
  [[nodiscard]] bool has_done() const { return !done.empty(); }

  // The printer's answer, in packets, behind what the host has not received yet.
  void answer(Bytes const& bytes);
  void forget_answers() { packets.clear(); }

  // Ends one of the client's transfers with this error number, or all of them.
  bool end(void const* client, std::uint64_t address, int error);
  void end_all(void const* client, int error);
  // The client has gone, and takes nothing any more.
  void forget(void const* client);

  void stall_in(Stall how);
  void stall_out(Stall how);
  void refuse_out(bool on);  // NAK: the host's transfer waits
  void use_zero_length_packets(bool on) { zero_length_packets = on; }

private:
  void move_out();
  void move_in();
  void finish_first(std::list<Transfer>& waiting, int status);

  std::size_t packet_size;
  Callback on_coming;
  Callback on_heard;
  std::list<Transfer> sending;
  std::list<Transfer> receiving;
  std::list<Transfer> done;
  std::deque<Bytes> packets;  // the printer's, for the host
  Stall in = Stall::Off;
  Stall out = Stall::Off;
  bool refuses_out = false;
  bool zero_length_packets = false;
};

}  // namespace sim
