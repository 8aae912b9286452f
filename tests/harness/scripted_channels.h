// A backend's two channels that bring whatever bytes a text says.
#pragma once

#include <sys/socket.h>

#include <deque>
#include <string>
#include <string_view>

#include "tests/harness/own_channels.h"

// A text is a command file, followed by parts that each begin with a marker:
//   =S= and =B=   bytes that the side channel or the back channel brings at a wait for it;
//                 without any bytes, silence until the time is up
//   =s= and =b=   the end of that channel
// Once the parts of a channel are used up, it is silent.
class ScriptedChannels {
public:
  explicit ScriptedChannels(std::string_view text);

  std::string commands{};

private:
  struct Part {
    std::string bytes{};
    bool ends = false;
  };
  using Parts = std::deque<Part>;

  void begin(Wait wait);

  Parts side_parts_{};
  Parts back_parts_{};
  OwnChannels channels_{SOCK_STREAM, [this](Wait wait) -> std::optional<int> {
                          begin(wait);
                          return std::nullopt;
                        }};
};
