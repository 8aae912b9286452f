// Holds back the signals that end the program, for the time in which something of ours at the
// scheduler has to be brought to its end first.
#pragma once

#include <algorithm>
#include <csignal>

// What a signal does to a request that the scheduler does not answer: it ends once a signal has
// come, or goes on, because what it changes must not be left half done.
enum class OpenRequests { End, GoOn };

class SignalHold {
public:
  explicit SignalHold(OpenRequests requests)
  {
    requests_end = requests == OpenRequests::End;
    sigset_t held;
    sigemptyset(&held);
    for (int const signal : ENDING) sigaddset(&held, signal);
    sigprocmask(SIG_BLOCK, &held, &before);
  }
  // A signal that has come meanwhile ends the program here.
  ~SignalHold()
  {
    requests_end = false;
    sigprocmask(SIG_SETMASK, &before, nullptr);
  }
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

  // Whether a request that is still without an answer is to be given up.
  [[nodiscard]] static bool endsRequests() { return requests_end && hasSignalCome(); }

private:
  static constexpr int ENDING[] = {SIGHUP, SIGINT, SIGTERM};
  static inline bool requests_end = false;
  sigset_t before{};
};
