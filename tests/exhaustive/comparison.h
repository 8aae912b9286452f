// One case of an exhaustive run: the messages that came against those that must come.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

#include "tests/harness/collected_messages.h"

// Ends the run at the first difference; otherwise counts the case and makes room for the
// next one.
inline void compare_messages(std::string& expected, unsigned long& cases)
{
  if (collected_messages() != expected) {
    std::printf("case %lu differs\n--- expected\n%s--- written\n%s", cases, expected.c_str(),
                collected_messages().c_str());
    std::exit(1);
  }
  ++cases;
  expected.clear();
  collected_messages().clear();
}
