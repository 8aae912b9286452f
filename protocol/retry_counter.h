// Bookkeeping of a test that is repeated until it succeeds or has failed too often.
#pragma once

#include <string>

class RetryCounter {
public:
  // `tolerated` failed tests are let pass; the next one expires the counter.
  explicit RetryCounter(unsigned int tolerated);

  // Records one attempt. A failure is counted, and takes back an earlier success; an
  // expired counter records nothing any more.
  void Test(bool ok);
  // Kept: the questions are not const, so only the loop that owns the counter asks them.
  bool isExpired();
  bool isFulfilled();
  // Text for the log, with the failures so far and the limit: "retrying(3/60)",
  // "fulfilled(0/60)" or "expired(61/60)".
  std::string to_string();

private:
  unsigned int count = 0;
  unsigned int limit;
  bool fulfilled = false;
};
