// One connection to the printer: hears escape commands and sends the answers, in order.
#include "sim/connection.h"

#include <asio/buffer.hpp>
#include <asio/write.hpp>
#include <chrono>
#include <string>
#include <utility>

#include "sim/message.h"
#include "sim/setting_text.h"

namespace sim {

Connection::Connection(asio::ip::tcp::socket peer, PrinterModel& model,
                       std::string const& printer_name)
    : socket(std::move(peer)),
      timer(socket.get_executor()),
      printer(model),
      prefix(printer_name.empty() ? "" : printer_name + ": ")
{
}

void Connection::start()
{
  tell("connection opened");
  asio::error_code ignored;
  // Each piece goes out when it is sent and does not wait for the next.
  socket.set_option(asio::ip::tcp::no_delay(true), ignored);
  read();
}

void Connection::read()
{
  socket.async_read_some(asio::buffer(received), [this, self = shared_from_this()](
                                                     asio::error_code error, std::size_t size) {
    if (!socket.is_open()) return;
    if (error == asio::error::eof) return end_of_input();
    if (error) return close();
    for (auto const& heard : parser.feed({received.data(), size})) hear(heard);
    if (socket.is_open()) read();
  });
}

void Connection::hear(Heard const& heard)
{
  if (!socket.is_open()) return;  // closed by a command before this one
  std::string line = std::string("heard ") + name(heard.command);
  if (heard.command == EscapeCommand::Unknown) line += " 0x" + to_text(heard.byte);
  tell(line);

  if (heard.command == EscapeCommand::Unknown && printer.counts_prints) print();
  if (heard.command == EscapeCommand::WakeUp && printer.close_after_wake_up) return close();
  if (printer.silent) return;
  if (heard.command == EscapeCommand::StatusQuery) answer(heard.command, status_reply(printer));
  if (heard.command == EscapeCommand::JobStatusQuery)
    answer(heard.command, job_status_reply(printer));
}

// The peer has said all it had to say. It may still listen: a spooler's backend does, and holds
// its job for as long as the printer keeps the connection open.
void Connection::end_of_input()
{
  for (auto const& heard : parser.finish()) hear(heard);
  input_ended = true;
  if (answers.empty()) close();
}

// All that a connection brings is one print.
void Connection::print()
{
  if (has_printed) return;
  has_printed = true;
  use_up_print(printer);
  tell("printed, " + to_text(printer.remaining) + " prints left");
}

void Connection::answer(EscapeCommand command, Bytes const& reply)
{
  auto const pieces = cut(reply, printer.fragments);
  answers.push_back({command, reply.size(), {pieces.begin(), pieces.end()}});
  if (answers.size() == 1) send_next();
}

void Connection::send_next()
{
  while (!answers.empty() && answers.front().pieces.empty()) {
    tell(std::string("answered ") + name(answers.front().command) + " with "
         + std::to_string(answers.front().length) + " bytes");
    answers.pop_front();
  }
  if (answers.empty()) {
    if (input_ended) close();
    return;
  }
  timer.expires_after(std::chrono::milliseconds(printer.delay));
  timer.async_wait([this, self = shared_from_this()](asio::error_code error) {
    if (!error && socket.is_open()) send_piece();
  });
}

void Connection::send_piece()
{
  asio::async_write(socket, asio::buffer(answers.front().pieces.front()),
                    [this, self = shared_from_this()](asio::error_code error, std::size_t) {
                      if (!socket.is_open()) return;
                      if (error) return close();
                      answers.front().pieces.pop_front();
                      send_next();
                    });
}

void Connection::close()
{
  asio::error_code ignored;
  timer.cancel();
  socket.close(ignored);
  tell("connection closed");
}

void Connection::tell(std::string const& what) const { say(prefix + what); }

}  // namespace sim
