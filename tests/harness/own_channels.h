// The two channels of a filter whose main runs in this very process, without waiting.
#pragma once

#include <functional>
#include <optional>

#include "tests/harness/file_descriptor.h"

// What libcups waits for.
enum class Wait { ForRoom, ForAnswer, ForReply };

// Puts a back channel on descriptor 3 and a side channel on 4, and stands in for poll and select,
// with which libcups waits for them. `begin` comes before each wait and may let something come
// in. A number from it is what the wait gives; otherwise the wait finds what is there now: no
// time passes.
class OwnChannels {
public:
  using Begin = std::function<std::optional<int>(Wait)>;

  OwnChannels(int side_channel_type, Begin begin_wait);
  ~OwnChannels();
  OwnChannels(OwnChannels const&) = delete;
  OwnChannels& operator=(OwnChannels const&) = delete;

  // The far ends.
  FileDescriptor side_channel{};
  FileDescriptor back_channel{};

  Begin const begin;
};

// Whether a read of the channel would find something, its end included.
bool has_come(int descriptor);
