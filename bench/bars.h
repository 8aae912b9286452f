// What the filter may cost, and whether it does.
#pragma once

#include <string>

#include "bench/table.h"

class Bars {
public:
  // REQUIRES: `measured` is better the smaller it is.
  void add(std::string const& what, double bar, double measured, int decimals)
  {
    table_.add({what, number(bar, decimals), number(measured, decimals),
                measured <= bar ? "yes" : "**no**"});
  }
  [[nodiscard]] std::string text() const { return table_.text(); }

private:
  Table table_{{"figure", "bar", "measured", "met"}};
};
