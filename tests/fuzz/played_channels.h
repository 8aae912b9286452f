// The backend's two channels in the hands of the fuzzer: real descriptors, but no waiting.
#pragma once

#include <deque>
#include <string>
#include <string_view>

// An input is a command file, followed by parts that each begin with a marker:
//   =S= and =B=   bytes that the side channel or the back channel brings at a wait for it;
//                 without any bytes, silence until the time is up
//   =s= and =b=   the end of that channel
// Once the parts of a channel are used up, it is silent.
struct Play {
  std::string commands{};
  std::deque<std::string> side_channel{};
  std::deque<std::string> back_channel{};
};

Play read_play(std::string_view input);

// Puts both channels in place, on descriptors 3 and 4, for as long as it lives.
class PlayedChannels {
public:
  explicit PlayedChannels(Play& script);
  ~PlayedChannels();
  PlayedChannels(PlayedChannels const&) = delete;
  PlayedChannels& operator=(PlayedChannels const&) = delete;

  // Called when the filter waits for one of the two and nothing is there.
  void bring_next_part(int descriptor);
  // Requests are of no interest here, but must not fill the channel.
  void take_requests() const;

  static PlayedChannels* current();

private:
  Play& play;
  int back_channel_end;
  int side_channel_end;
};
