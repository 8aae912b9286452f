// The filter as the scheduler starts it: its arguments and its descriptors 0 to 4.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

#include "tests/harness/file_descriptor.h"

// What stands behind the filter's standard output.
enum class DeviceStream { Pipe, BrokenPipe, FullDevice, Closed };

// A command job as the scheduler hands it over. The program's own name is the queue's.
struct Job {
  std::vector<std::string> arguments{"1", "user", "title", "1", ""};
  std::string standard_input{};
  DeviceStream device = DeviceStream::Pipe;
  bool unbuffered_device = false;
  std::string program{};  // what is started; the filter unless told otherwise
};

// A running filter and the other ends of its descriptors, none of which blocks a read.
struct FilterProcess {
  pid_t pid = -1;
  FileDescriptor device{};
  FileDescriptor messages{};  // keeps the borders between writes
  FileDescriptor back_channel{};
  FileDescriptor side_channel{};
  FileDescriptor clock{};  // speaks with the preloaded clock; ends when the process ends
};

FilterProcess start_filter(Job const& job);

// All bytes that can be had without waiting.
std::string read_available(FileDescriptor const& descriptor);
