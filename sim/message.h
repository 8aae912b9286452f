// One line of the simulator's messages: written whole, so that a reader never sees half of it.
#pragma once

#include <cstdio>
#include <string>

namespace sim {

inline void say(std::string line, std::FILE* stream = stdout)
{
  line += '\n';
  std::fwrite(line.data(), 1, line.size(), stream);
  std::fflush(stream);
}

}  // namespace sim
