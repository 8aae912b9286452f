// Which step each call of the conversation takes part in, and what a fault makes of it there.
#include "tests/oracle/expected_run.h"

#include <algorithm>
#include <cstring>

#include "tests/oracle/run.h"
#include "tests/oracle/status_reply.h"

namespace {

using Kind = Call::Kind;

constexpr int COMMENTS = 63;
constexpr long TIMEOUT = 3;

FaultedWorld make_world()
{
  std::string const asleep = StatusReply{.power = 1}.bytes();
  std::string const good = StatusReply{}.bytes();
  std::string const unknown_error = StatusReply{.error = {1, 2, 3}}.bytes();
  FaultedWorld world;
  world.printer.replies = {
      {{asleep}}, {{good}}, {{unknown_error.substr(0, 100)}, {unknown_error.substr(100)}}};
  world.printer.job_status = {{job_status_reply({0x50, 0x30, 0x01, 0x02})}};
  // The first read of libcups, 4096 bytes, ends where a line ends.
  world.commands = "ReportLevels" + std::string(51, ' ') + "\n";
  for (int i = 0; i < COMMENTS; ++i) world.commands += "#" + std::string(62, '-') + "\n";
  world.commands += "ReportStatus\n";
  return world;
}

class FaultyWorld {
public:
  FaultyWorld(Fault const& planned, bool is_harmless) : fault(planned), harmless(is_harmless) {}

  ExpectedRun tell()
  {
    Surroundings const here{[this](Call const& call) { return meet(call); },
                            [this](std::string_view text) { run.messages += text; }};
    if (fails(Step::FileOpen)) {
      run.exit_status = 1;
      run.messages =
          std::string("ERROR: Unable to open command file - : ") + strerror(fault.error) + "\n";
    } else {
      run.exit_status = tell_run(here);
    }
    tell_job_status(here);
    return run;
  }

private:
  // Counts the step; whether it fails.
  bool fails(Step step) { return fault.hits(step, count_of(counts, step)++) && !harmless; }

  Outcome meet(Call const& call)
  {
    switch (call.kind) {
      case Kind::Write:
        command = call.text;
        return {fails(Step::DeviceWrite) ? fault.result : static_cast<long>(command.size())};
      case Kind::Flush:
        return {fails(Step::DeviceFlush) ? fault.result : hear_command()};
      case Kind::Request:
        return is_answered() ? Outcome{1, "\x01"} : Outcome{TIMEOUT};
      case Kind::Read:
        return read();
      case Kind::Directive:
        return next_directive();
      default:
        return {};
    }
  }

  long hear_command()
  {
    run.device += command;
    pieces.clear();
    if (command == "\033V21") pieces = every_step().printer.replies.at(queries++);
    if (command.starts_with("\033V10")) pieces = every_step().printer.job_status;
    return 0;
  }

  bool is_answered()
  {
    constexpr Step STEPS_OF_A_REQUEST[] = {Step::RequestWait, Step::RequestWrite, Step::AnswerWait,
                                           Step::AnswerRead};
    return std::ranges::none_of(STEPS_OF_A_REQUEST, [this](Step step) { return fails(step); });
  }

  Outcome read()
  {
    // Whatever a wait ends with, the read after it finds nothing.
    if (fails(Step::ReplyWait)) return {-1};
    if (fails(Step::ReplyRead)) return {fault.result};
    piece = pieces.front().bytes;
    pieces.erase(pieces.begin());
    return {static_cast<long>(piece.size()), piece};
  }

  Outcome next_directive()
  {
    if (directives == 0 && fails(Step::StandardInput)) return {};
    if (directives == 2 || fails(Step::FileRead)) return {};
    return directives++ == 0 ? Outcome{1, "ReportLevels"} : Outcome{COMMENTS + 2, "ReportStatus"};
  }

  Fault fault;
  bool harmless;
  StepCounts counts{};
  ExpectedRun run{};
  std::string command{};
  Reply pieces{};  // of the reply that is on its way
  std::string piece{};
  std::size_t queries = 0;
  int directives = 0;
};

}  // namespace

FaultedWorld const& every_step()
{
  static FaultedWorld const world = make_world();
  return world;
}

ExpectedRun expected_run(Fault const& fault, bool harmless)
{
  return FaultyWorld(fault, harmless).tell();
}
