// A queue's values as people and programs are shown them.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "admin/queue.h"
#include "admin/verdict.h"

struct ShownReason {
  std::string keyword;
  std::string text;                // of the PPD file; empty without one
  std::vector<std::string> codes;  // the printer's codes behind the keyword, "06 02 02"
};

struct Prints {
  int left;
  int total;
};

struct QueueStatus {
  Queue queue;
  Verdict verdict;
  std::string ribbon;            // the print size it is made for; empty if not known
  std::optional<Prints> prints;  // nothing if not known
  std::optional<int> age;        // of the level, in seconds; nothing: never asked
  std::vector<ShownReason> reasons;
  std::string server = {};  // one of several that are asked; empty: the only one
};

// "photo", or of several servers "photo@server".
std::string shown_name(QueueStatus const& status);

// `ppd` is where the reasons' texts come from; it may be empty.
QueueStatus make_queue_status(Queue const& queue, std::string_view ppd, int low);
