// Bookkeeping of a test that is repeated until it succeeds or has failed too often.
#include "protocol/retry_counter.h"

#include <cstdio>

RetryCounter::RetryCounter(unsigned int tolerated) : limit(tolerated) {}

void RetryCounter::Test(bool ok)
{
  if (isExpired()) return;
  fulfilled = ok;
  if (!ok) ++count;
}

// Kept: not const, see the header.
// NOLINTBEGIN(readability-make-member-function-const)
bool RetryCounter::isExpired() { return count > limit; }

bool RetryCounter::isFulfilled() { return fulfilled; }
// NOLINTEND(readability-make-member-function-const)

std::string RetryCounter::to_string()
{
  char const* const word = fulfilled ? "fulfilled" : isExpired() ? "expired" : "retrying";

  char text[128];
  std::snprintf(text, sizeof text, "%s(%u/%u)", word, count, limit);
  return text;
}
