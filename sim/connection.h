// One connection to the printer: hears escape commands and sends the answers, in order.
#pragma once

#include <array>
#include <asio/ip/tcp.hpp>
#include <asio/steady_timer.hpp>
#include <cstddef>
#include <cstdint>
#include <deque>
#include <memory>
#include <string>

#include "sim/escape_commands.h"
#include "sim/printer_model.h"

namespace sim {

// Lives as long as an operation on its socket or timer is under way.
class Connection : public std::enable_shared_from_this<Connection> {
public:
  // What happens is told with the printer's name in front, if it has one.
  // REQUIRES: `model` outlives the connection.
  Connection(asio::ip::tcp::socket peer, PrinterModel& model, std::string const& printer_name);

  void start();

private:
  struct Answer {
    EscapeCommand command;
    std::size_t length;        // of the whole reply
    std::deque<Bytes> pieces;  // not yet sent
  };

  void read();
  void hear(Heard const& heard);
  void end_of_input();
  void print();
  void answer(EscapeCommand command, Bytes const& reply);
  void send_next();
  void send_piece();
  void close();
  void tell(std::string const& what) const;

  asio::ip::tcp::socket socket;
  asio::steady_timer timer;
  PrinterModel& printer;
  std::string prefix;  // of each message
  EscapeCommandParser parser;
  std::array<std::uint8_t, 4096> received{};
  std::deque<Answer> answers;  // the first is being sent
  bool input_ended = false;
  bool has_printed = false;
};

}  // namespace sim
