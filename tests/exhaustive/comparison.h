// One case of an exhaustive run: the messages that came against those that must come.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

#include "tests/harness/collected_messages.h"
#include "tests/harness/text_difference.h"

// Ends the run at the first difference and names the case; otherwise counts it and makes room
// for the next one.
template <typename Name>
void compare_messages(std::string& expected, unsigned long& cases, Name const& name_of_case)
{
  if (collected_messages() != expected) {
    std::printf("%s, case %lu, %s", name_of_case().c_str(), cases,
                text_difference(collected_messages(), expected).c_str());
    std::exit(1);
  }
  ++cases;
  expected.clear();
  collected_messages().clear();
}
