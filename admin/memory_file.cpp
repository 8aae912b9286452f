// A file in memory, for libcups to read a document from and to write one to.
#include "admin/memory_file.h"

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

bool write_all(int fd, std::string_view bytes)
{
  while (!bytes.empty()) {
    ssize_t const written = write(fd, bytes.data(), bytes.size());
    if (written <= 0) return false;
    bytes.remove_prefix(static_cast<std::size_t>(written));
  }
  return true;
}

}  // namespace

MemoryFile::MemoryFile(std::string_view bytes) : fd(memfd_create("velmoctl", MFD_CLOEXEC))
{
  if (fd < 0 || write_all(fd, bytes)) return;
  close(fd);
  fd = -1;
}

MemoryFile::~MemoryFile()
{
  if (fd >= 0) close(fd);
}

std::optional<std::string> MemoryFile::read() const
{
  struct stat status {};
  if (fd < 0 || fstat(fd, &status) != 0) return std::nullopt;
  std::string bytes(static_cast<std::size_t>(status.st_size), '\0');
  if (pread(fd, bytes.data(), bytes.size(), 0) != status.st_size) return std::nullopt;
  return bytes;
}
