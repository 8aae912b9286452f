// A descriptor read line by line beside the printer's work: the person's orders.
#pragma once

#include <asio/io_context.hpp>
#include <asio/posix/stream_descriptor.hpp>
#include <functional>
#include <string>
#include <string_view>

namespace sim {

class LineReader {
public:
  // Hands every line of the descriptor, without its newline, to the callback; stays quiet from the
  // end of input on, or from the start if the descriptor cannot be read.
  LineReader(asio::io_context& io, int source, std::function<void(std::string_view)> callback);
  // Gives the descriptor back as it was: a terminal is shared with the shell.
  ~LineReader();

  LineReader(LineReader const&) = delete;
  LineReader& operator=(LineReader const&) = delete;

private:
  void read();

  int descriptor;
  int flags;  // of the descriptor, before it was made non-blocking
  asio::posix::stream_descriptor input;
  std::string buffer;
  std::function<void(std::string_view)> on_line;
};

}  // namespace sim
