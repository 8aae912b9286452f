// Whether the floor is one: it must leave the scheduler with the same lines.
#include "bench/opponents.h"

#include <stdexcept>

#include "bench/player/play.h"
#include "tests/harness/command_file_text.h"
#include "tests/harness/temporary_file.h"

void check_floor()
{
  for (char const* directive : {"ReportLevels", "ReportStatus"}) {
    TemporaryFile const file(command_file_text(directive, 1));
    auto const outcomes = play({{{FILTER.path}, file.path(), Messages::Packets},
                                {{FLOOR.path}, file.path(), Messages::Packets}});
    if (outcomes[0].messages != outcomes[1].messages)
      throw std::runtime_error(std::string("the floor and the filter differ for ") + directive);
  }
}
