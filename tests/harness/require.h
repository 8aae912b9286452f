// How a run without a test framework tells that a rule is broken: it says which, and ends.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include "tests/harness/text_difference.h"

inline void require(bool holds, char const* rule)
{
  if (holds) return;
  std::fprintf(stderr, "broken rule: %s\n", rule);
  std::abort();
}

inline void require_equal(std::string_view is, std::string_view should_be)
{
  if (is == should_be) return;
  std::fprintf(stderr, "%s", text_difference(is, should_be).c_str());
  std::abort();
}
