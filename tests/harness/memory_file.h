// A file in memory, numbered above what the filter uses.
#pragma once

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdlib>
#include <string>
#include <string_view>

class MemoryFile {
public:
  explicit MemoryFile(char const* name)
  {
    int const low = memfd_create(name, 0);
    number = fcntl(low, F_DUPFD, 50);
    close(low);
    if (number < 0) abort();
  }
  MemoryFile(MemoryFile const&) = delete;
  MemoryFile& operator=(MemoryFile const&) = delete;
  ~MemoryFile() { close(number); }

  void append(std::string_view text) const
  {
    auto const size = static_cast<ssize_t>(text.size());
    if (syscall(SYS_write, number, text.data(), text.size()) != size) abort();
  }

  [[nodiscard]] std::string text() const
  {
    std::string all(static_cast<std::size_t>(lseek(number, 0, SEEK_END)), '\0');
    if (pread(number, all.data(), all.size(), 0) != static_cast<ssize_t>(all.size())) abort();
    return all;
  }

  int number = -1;
};
