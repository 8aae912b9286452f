// A scheduler in the test's own process that has events to tell, and takes command jobs.
#pragma once

#include <cups/cups.h>

#include <chrono>
#include <set>
#include <string>
#include <vector>

struct FakeEvent {
  int number;
  int time;         // by the scheduler's clock
  bool is_job_end;  // of a print
  std::string queue = "photo";
};

struct FakeEvents {
  bool is_there = true;
  bool has_room = true;  // for a subscription
  int time = 5000;       // its clock
  bool forgets = false;  // jobs that have ended
  int level_time = 0;    // of the queue
  std::vector<FakeEvent> kept;
  int last_id = 6;             // of a subscription
  std::set<std::string> open;  // queues of which a command job is not completed
  std::string requests;
  std::chrono::steady_clock::time_point now;  // by the test's clock
};

// While it lives, connections lead to this scheduler, requests are answered by it, and the clock is
// the test's.
class FakeEventSource {
public:
  explicit FakeEventSource(FakeEvents& answering);
  ~FakeEventSource();
  FakeEventSource(FakeEventSource const&) = delete;
  FakeEventSource& operator=(FakeEventSource const&) = delete;
};
