// Holds back the signals that end the program, for the time in which a queue is between two
// states.
#pragma once

#include <csignal>

class SignalHold {
public:
  SignalHold()
  {
    sigset_t held;
    sigemptyset(&held);
    for (int const signal : {SIGHUP, SIGINT, SIGTERM}) sigaddset(&held, signal);
    sigprocmask(SIG_BLOCK, &held, &before);
  }
  // A signal that has come meanwhile ends the program here.
  ~SignalHold() { sigprocmask(SIG_SETMASK, &before, nullptr); }
  SignalHold(SignalHold const&) = delete;
  SignalHold& operator=(SignalHold const&) = delete;

private:
  sigset_t before{};
};
