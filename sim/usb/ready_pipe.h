// The device's node: a pipe that tells hosts when there is something for them to take.
#pragma once

#include <string>

namespace sim {

// A host waits until its node can be written. A regular file always can be, so that a host would
// ask over and over; a pipe cannot as long as it is full.
class ReadyPipe {
public:
  // Puts the pipe in place of the file. Throws std::system_error.
  explicit ReadyPipe(std::string const& path);
  ~ReadyPipe();

  ReadyPipe(ReadyPipe const&) = delete;
  ReadyPipe& operator=(ReadyPipe const&) = delete;

  void show(bool ready);

private:
  int descriptor = -1;
  bool is_full = false;
};

}  // namespace sim
