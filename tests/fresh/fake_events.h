// A scheduler in the test's own process that has events to tell.
#pragma once

#include <cups/cups.h>

#include <string>
#include <vector>

struct FakeEvent {
  int number;
  int time;         // by the scheduler's clock
  bool is_job_end;  // of a print
};

struct FakeEvents {
  bool is_there = true;
  bool has_room = true;  // for a subscription
  int time = 5000;       // its clock
  bool forgets = false;  // jobs that have ended
  int level_time = 0;    // of the queue
  std::vector<FakeEvent> kept;
  int last_id = 6;  // of a subscription
  std::string requests;
};

// While it lives, connections lead to this scheduler, and requests are answered by it.
class FakeEventSource {
public:
  explicit FakeEventSource(FakeEvents& answering);
  ~FakeEventSource();
  FakeEventSource(FakeEventSource const&) = delete;
  FakeEventSource& operator=(FakeEventSource const&) = delete;
};
