// A file with a given content that lives as long as its owner.
#pragma once

#include <unistd.h>

#include <cstdlib>
#include <stdexcept>
#include <string>

class TemporaryFile {
public:
  explicit TemporaryFile(std::string const& content)
  {
    int const descriptor = mkstemp(path_.data());
    ssize_t const written = write(descriptor, content.data(), content.size());
    close(descriptor);
    if (written != static_cast<ssize_t>(content.size())) throw std::runtime_error(path_);
  }
  TemporaryFile(TemporaryFile const&) = delete;
  TemporaryFile& operator=(TemporaryFile const&) = delete;
  ~TemporaryFile() { unlink(path_.c_str()); }

  [[nodiscard]] std::string const& path() const { return path_; }

private:
  std::string path_ = "/tmp/command-file-XXXXXX";
};
