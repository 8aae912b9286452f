// What the product writes to standard error, taken from descriptor 2 itself.
#pragma once

#include <sys/types.h>

#include <string>
#include <vector>

// Sends descriptor 2 elsewhere for as long as it lives.
class Descriptor2 {
public:
  explicit Descriptor2(int replacement);
  ~Descriptor2();
  Descriptor2(Descriptor2 const&) = delete;
  Descriptor2& operator=(Descriptor2 const&) = delete;

private:
  int saved_;
};

// Collects the text. A sanitizer's report lands in it too: when a test program dies
// without a word, run it again with ASAN_OPTIONS=log_path=... or UBSAN_OPTIONS.
class StderrCapture {
public:
  StderrCapture();
  ~StderrCapture();
  StderrCapture(StderrCapture const&) = delete;
  StderrCapture& operator=(StderrCapture const&) = delete;

  // The text written since the last call.
  std::string take();

private:
  int file_;
  off_t taken_ = 0;
  Descriptor2 redirection_;
};

// Collects the writes one by one, some hundred small ones at most: what is written at
// once arrives at once. A write that finds no room is lost, so it cannot block.
class StderrWrites {
public:
  StderrWrites() : StderrWrites(packet_pair()) {}
  ~StderrWrites();
  StderrWrites(StderrWrites const&) = delete;
  StderrWrites& operator=(StderrWrites const&) = delete;

  // The writes since the last call, in order.
  std::vector<std::string> take();

private:
  struct Ends {
    int in;
    int out;
  };
  static Ends packet_pair();
  explicit StderrWrites(Ends packets) : ends_(packets), redirection_(packets.in) {}

  Ends ends_;
  Descriptor2 redirection_;
};

// Whether every write is one complete line, as it must be on a pipe that the job's
// other programs share.
bool each_is_one_line(std::vector<std::string> const& writes);
