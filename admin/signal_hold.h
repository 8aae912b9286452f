// Holds back the signals that end the program, for the time in which something of ours at the
// scheduler has to be brought to its end first.
#pragma once

#include <algorithm>
#include <csignal>

class SignalHold {
public:
  SignalHold()
  {
    sigset_t held;
    sigemptyset(&held);
    for (int const signal : ENDING) sigaddset(&held, signal);
    sigprocmask(SIG_BLOCK, &held, &before);
  }
  // A signal that has come meanwhile ends the program here.
  ~SignalHold() { sigprocmask(SIG_SETMASK, &before, nullptr); }
  SignalHold(SignalHold const&) = delete;
  SignalHold& operator=(SignalHold const&) = delete;

  // Whether one has come that is held back.
  [[nodiscard]] static bool hasSignalCome()
  {
    sigset_t waiting;
    sigemptyset(&waiting);
    sigpending(&waiting);
    return std::ranges::any_of(ENDING, [&](int it) { return sigismember(&waiting, it) == 1; });
  }

private:
  static constexpr int ENDING[] = {SIGHUP, SIGINT, SIGTERM};
  sigset_t before{};
};
