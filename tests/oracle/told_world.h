// What a telling leaves in a fake world.
#pragma once

#include "tests/harness/fake_world.h"
#include "tests/oracle/run.h"

// The transcript of a world with this script, in which `tell` meets its calls.
template <typename Tell>
std::string told(FakeScript const& script, Tell const& tell)
{
  FakeWorld world(script);
  tell(Surroundings{[&](Call const& call) { return world.meet(call).value_or(Outcome{}); },
                    [&](std::string_view text) { world.hear(text); }});
  return world.transcript();
}
