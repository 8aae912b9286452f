// A command file that is written while the filter reads it: a FIFO with a writer behind it.
#pragma once

#include <sys/types.h>

#include <functional>
#include <string>

class CommandFeeder {
public:
  // `write_commands` runs in a process of its own and is given the FIFO's descriptor, which is
  // closed when it returns.
  explicit CommandFeeder(std::function<void(int)> const& write_commands);
  CommandFeeder(CommandFeeder const&) = delete;
  CommandFeeder& operator=(CommandFeeder const&) = delete;
  ~CommandFeeder();

  [[nodiscard]] std::string path() const { return directory_ + "/commands"; }

private:
  std::string directory_ = "/tmp/command-feeder-XXXXXX";
  pid_t writer_ = -1;
};

// Writes all of the text; ends the writer's process when nobody reads any more.
void feed_text(int fifo, std::string const& text);

// Waits until the reader has taken everything.
void wait_until_read(int fifo);
