// When a queue's printer is to be asked again: the rules, with the clock as an argument.
#pragma once

#include <chrono>
#include <cstddef>
#include <optional>

using Time = std::chrono::steady_clock::time_point;
using Duration = std::chrono::steady_clock::duration;

struct FreshRules {
  Duration settle;  // the queue has been quiet for so long
  Duration delay;   // since the end of the last print
  Duration idle;    // without a print and an ask; zero is never
};

// What a look at the queue has shown.
struct Seen {
  bool is_askable;       // not stopped, rejecting or detached
  bool is_new;           // its level has been lost: it was detached, or is not there
  bool is_busy;          // a job is waiting or printing
  bool is_asking;        // a command job of ours is not completed
  bool does_not_answer;  // what the last ask brought
};

// What is known of one queue. Each function below gives what is known after something happened.
struct Freshness {
  Seen seen;
  bool is_owed;     // an ask, for a start, a print or what went unseen
  Time owed_since;  // the first print that it is owed for
  int prints;       // since the last ask
  std::optional<Time> last_print;
  std::optional<Time> last_event;   // since the last look
  std::optional<Time> quiet_since;  // nothing: it is not quiet, or was never looked at
  Time idle_since;                  // the start, the last print or the last ask
  std::optional<Time> last_ask;
  std::optional<Time> retry;  // of an ask that the printer did not answer
  std::size_t retries;        // of them in a row
};

Freshness at_start(Time now);

// A print has ended, or may have ended unseen.
Freshness after_print(Freshness state, Time ended);

// Some job has begun or ended: quiet begins no sooner.
Freshness after_event(Freshness state, Time when);

Freshness after_look(Freshness state, Seen const& seen, Time now);

// A command job of ours has been sent.
Freshness after_ask(Freshness state, FreshRules const& rules, Time now);

// The scheduler did not take the command job.
Freshness after_refusal(Freshness state, FreshRules const& rules, Time now);

// A pause has caught our command job, which was taken back: the ask is owed again.
Freshness after_pause(Freshness state);

// When the printer is to be asked; nothing as long as only another look can tell.
std::optional<Time> ask_time(Freshness const& state, FreshRules const& rules);
