// Holds back the signals that end the program, for the time in which something of ours at the
// scheduler has to be brought to its end first.
#pragma once

#include <algorithm>
#include <chrono>
#include <csignal>

// What a signal does to a request that the scheduler does not answer: it ends once a signal has
// come, or goes on, because what it changes must not be left half done.
enum class OpenRequests { End, GoOn };

class SignalHold {
public:
  explicit SignalHold(OpenRequests requests)
  {
    requests_end = requests == OpenRequests::End;
    sigset_t const held = endingSignals();
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
  [[nodiscard]] static bool endsRequests()
  {
    return requests_end && (has_taken || hasSignalCome());
  }

  // Waits for one for so long. It is then taken, and ends nothing any more.
  [[nodiscard]] static bool takeSignalWithin(std::chrono::steady_clock::duration time)
  {
    using std::chrono::nanoseconds;
    using std::chrono::seconds;
    nanoseconds const pause = std::max(nanoseconds(time), nanoseconds::zero());
    auto const whole = std::chrono::duration_cast<seconds>(pause);
    timespec limit{};
    limit.tv_sec = static_cast<decltype(limit.tv_sec)>(whole.count());
    limit.tv_nsec = static_cast<decltype(limit.tv_nsec)>((pause - whole).count());
    sigset_t const held = endingSignals();
    has_taken = sigtimedwait(&held, nullptr, &limit) > 0;
    return has_taken;
  }

private:
  static sigset_t endingSignals()
  {
    sigset_t set;
    sigemptyset(&set);
    for (int const signal : ENDING) sigaddset(&set, signal);
    return set;
  }

  static constexpr int ENDING[] = {SIGHUP, SIGINT, SIGTERM};
  static inline bool requests_end = false;
  static inline bool has_taken = false;
  sigset_t before{};
};
