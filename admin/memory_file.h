// A file in memory, for libcups to read a document from and to write one to.
#pragma once

#include <optional>
#include <string>
#include <string_view>

class MemoryFile {
public:
  // A file with these bytes; its descriptor is -1 if the system has no room for it.
  explicit MemoryFile(std::string_view bytes = {});
  ~MemoryFile();
  MemoryFile(MemoryFile const&) = delete;
  MemoryFile& operator=(MemoryFile const&) = delete;

  [[nodiscard]] int descriptor() const { return fd; }
  // All that the file holds now; nothing if it cannot be read.
  [[nodiscard]] std::optional<std::string> read() const;

private:
  int fd;
};
