// How a fuzz target tells that a rule is broken: it says which, and stops the run.
#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

inline void require(bool holds, char const* rule)
{
  if (holds) return;
  std::fprintf(stderr, "broken rule: %s\n", rule);
  std::abort();
}

inline void require_equal(std::string_view actual, std::string_view expected)
{
  if (actual == expected) return;
  std::fprintf(stderr, "--- expected\n%s--- actual\n%s", std::string(expected).c_str(),
               std::string(actual).c_str());
  std::abort();
}
