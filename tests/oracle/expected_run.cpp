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
  FaultyWorld(Fault const& fault, bool harmless) : fault_(fault), harmless_(harmless) {}

  ExpectedRun tell()
  {
    Surroundings const here{[this](Call const& call) { return meet(call); },
                            [this](std::string_view text) { run_.messages += text; }};
    if (fails(Step::FileOpen)) {
      run_.exit_status = 1;
      run_.messages =
          std::string("ERROR: Unable to open command file - : ") + strerror(fault_.error) + "\n";
    } else {
      run_.exit_status = tell_run(here);
    }
    tell_job_status(here);
    return run_;
  }

private:
  // Counts the step; whether it fails.
  bool fails(Step step) { return fault_.hits(step, count_of(counts_, step)++) && !harmless_; }

  Outcome meet(Call const& call)
  {
    switch (call.kind) {
      case Kind::Write:
        command_ = call.text;
        return {fails(Step::DeviceWrite) ? fault_.result : static_cast<long>(command_.size())};
      case Kind::Flush:
        return {fails(Step::DeviceFlush) ? fault_.result : hear_command()};
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
    run_.device += command_;
    pieces_.clear();
    if (command_ == "\033V21") pieces_ = every_step().printer.replies.at(queries_++);
    if (command_.starts_with("\033V10")) pieces_ = every_step().printer.job_status;
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
    if (fails(Step::ReplyRead)) return {fault_.result};
    piece_ = pieces_.front().bytes;
    pieces_.erase(pieces_.begin());
    return {static_cast<long>(piece_.size()), piece_};
  }

  Outcome next_directive()
  {
    if (directives_ == 0 && fails(Step::StandardInput)) return {};
    if (directives_ == 2 || fails(Step::FileRead)) return {};
    return directives_++ == 0 ? Outcome{1, "ReportLevels"} : Outcome{COMMENTS + 2, "ReportStatus"};
  }

  Fault fault_;
  bool harmless_;
  StepCounts counts_{};
  ExpectedRun run_{};
  std::string command_{};
  Reply pieces_{};  // of the reply that is on its way
  std::string piece_{};
  std::size_t queries_ = 0;
  int directives_ = 0;
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
