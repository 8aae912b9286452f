// A descriptor that is closed with its owner, numbered above those that the filter inherits.
#pragma once

#include <fcntl.h>
#include <unistd.h>

#include <stdexcept>
#include <utility>

class FileDescriptor {
public:
  FileDescriptor() = default;

  // Takes over the number and moves it out of the range that a child rearranges.
  explicit FileDescriptor(int number) : number_(fcntl(number, F_DUPFD_CLOEXEC, FIRST))
  {
    close(number);
    if (number_ < 0) throw std::runtime_error("no descriptor");
  }

  FileDescriptor(FileDescriptor const&) = delete;
  FileDescriptor& operator=(FileDescriptor const&) = delete;
  FileDescriptor(FileDescriptor&& other) noexcept : number_(std::exchange(other.number_, -1)) {}
  FileDescriptor& operator=(FileDescriptor&& other) noexcept
  {
    std::swap(number_, other.number_);
    return *this;
  }
  ~FileDescriptor() { reset(); }

  void reset()
  {
    if (number_ >= 0) close(std::exchange(number_, -1));
  }

  // -1 when there is none.
  [[nodiscard]] int get() const { return number_; }

private:
  static constexpr int FIRST = 20;
  int number_ = -1;
};
