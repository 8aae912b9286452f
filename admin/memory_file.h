// A file in memory, for libcups to read a document from and to write one to.
#pragma once

#include <optional>
#include <string>
#include <string_view>

class MemoryFile {
public:
  // A file with these bytes; without one if the system has no room for it.
  explicit MemoryFile(std::string_view bytes = {});
  ~MemoryFile();
  MemoryFile(MemoryFile const&) = delete;
  MemoryFile& operator=(MemoryFile const&) = delete;

  [[nodiscard]] bool exists() const { return fd >= 0; }
  [[nodiscard]] int descriptor() const { return fd; }
  // All that the file holds now; nothing if it cannot be read.
  [[nodiscard]] std::optional<std::string> read() const;

private:
  int fd;
};

// What is said where a file in memory is missing.
inline constexpr char const* NO_MEMORY_FILE =
    "the system has no memory or no descriptor left for a file; close other programs and try again";
