// The scheduler's destination list, played by a test.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "tests/harness/replaced_calls.h"

// While a FakeDestinations lives, cupsGetDests hands out copies of this list. The calls
// that pick, read and free are the library's own; they are noted in the current FakeWorld.
class FakeDestinations {
public:
  struct Destination {
    std::string name;
    bool is_default = false;
    std::vector<std::pair<std::string, std::string>> options;
  };

  explicit FakeDestinations(std::vector<Destination> list);
  ~FakeDestinations() = default;
  FakeDestinations(FakeDestinations const&) = delete;
  FakeDestinations& operator=(FakeDestinations const&) = delete;

  std::vector<Destination> destinations;
  bool strdup_fails = false;

private:
  ReplacementScope scope_;
};
