// A descriptor read line by line beside the printer's work: the person's orders.
#include "sim/line_reader.h"

#include <fcntl.h>
#include <unistd.h>

#include <asio/buffer.hpp>
#include <asio/read_until.hpp>
#include <utility>

namespace sim {

LineReader::LineReader(asio::io_context& io, int source,
                       std::function<void(std::string_view)> callback)
    : descriptor(source), flags(fcntl(source, F_GETFL)), input(io), on_line(std::move(callback))
{
  asio::error_code error;
  input.assign(dup(descriptor), error);
  if (!error) read();
}

LineReader::~LineReader()
{
  if (flags >= 0) fcntl(descriptor, F_SETFL, flags);
}

// A file is always ready and never waited for, so reading works where epoll refuses.
void LineReader::read()
{
  asio::async_read_until(input, asio::dynamic_buffer(buffer), '\n',
                         [this](asio::error_code error, std::size_t size) {
                           if (error) {
                             if (!buffer.empty()) on_line(buffer);
                             return;
                           }
                           std::string const line = buffer.substr(0, size - 1);
                           buffer.erase(0, size);
                           on_line(line);
                           read();
                         });
}

}  // namespace sim
