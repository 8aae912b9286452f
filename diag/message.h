// One message for the scheduler, written whole. All that our code says goes through here: log
// lines, attributes, reasons and the usage.
#pragma once

#include <sys/uio.h>
#include <unistd.h>

#include <array>
#include <string_view>

inline iovec message_piece(std::string_view text)
{
  return {const_cast<char*>(text.data()), text.size()};
}

// Writes the pieces of text, in order, to standard error in one write. A message brings
// its own newline. All programs of a job share the scheduler's status pipe: a line written
// in several writes gets torn and spoils the lines of the others, one of up to PIPE_BUF
// (4096) bytes in one write does not. A failed write is ignored: nobody is left to be told.
template <typename... Text>
void write_message(Text const&... text)
{
  std::array<iovec, sizeof...(text)> const pieces{message_piece(text)...};
  [[maybe_unused]] ssize_t const written =
      writev(STDERR_FILENO, pieces.data(), static_cast<int>(pieces.size()));
}
