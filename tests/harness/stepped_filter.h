// A running filter that is held at each of its waits and pauses.
#pragma once

#include "tests/harness/filter_process.h"
#include "tests/harness/scripted_printer.h"

class SteppedFilter {
public:
  SteppedFilter(Job const& job, PrinterScript script);
  SteppedFilter(SteppedFilter const&) = delete;
  SteppedFilter& operator=(SteppedFilter const&) = delete;
  ~SteppedFilter();

  // What the filter waits for next, as "wait 5.000000 s on 4", "usleep 500000" or "sleep 1";
  // empty when it has ended.
  std::string next_wait();
  // Lets the wait that next_wait has told end as the script says.
  void go_on();

  // Sends SIGTERM; returns the signal that ended the filter, 0 for none. A filter that goes on
  // for a minute is ended by SIGKILL.
  int terminate();

  // All that the filter has written so far.
  std::string messages();
  std::string device();
  // Returns once `text` stands on standard error.
  void wait_for_message(std::string const& text);
  // The printer takes nothing any more, and the way to it is full.
  void fill_device();

private:
  FilterProcess filter_;
  ScriptedPrinter printer_;
  std::string wait_{};
  std::string messages_{};
  std::string device_{};
  bool device_is_full_ = false;
};
