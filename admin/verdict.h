// What a queue's values come to, in one word.
#pragma once

#include "admin/queue.h"

// From the worst to the best; ascending, so that a list of queues is sorted by it.
enum class Verdict {
  PrinterError,
  RibbonUsedUp,
  QueueStopped,
  DoesNotAnswer,
  UnknownLevel,
  NeverAsked,
  NotAttached,
  RibbonLow,
  Ready,
};

// A level below `low`, in percent, is low.
Verdict verdict_of(Queue const& queue, int low);

// "ribbon used up"; with another character than a blank between the words.
std::string verdict_text(Verdict verdict, char between = ' ');

// Why the scheduler cannot start a filter of the queue; empty if it can start them all.
std::string filter_fault(Queue const& queue);

enum class Severity { Ok, Warning, Unknown, Critical };  // ascending
Severity severity_of(Verdict verdict);
