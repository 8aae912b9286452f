// The process: its files, its descriptors, and what it leaves.
#include "tests/harness/faulted_run.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <new>

#include "protocol/queries.h"
#include "tests/harness/counted_allocations.h"
#include "tests/harness/faulted_calls.h"
#include "tests/harness/memory_file.h"
#include "tests/harness/own_printer.h"

int filter_main(int argc, char* argv[]);

namespace {

constexpr unsigned DEADLINE = 60;  // seconds
constexpr int DESCRIPTORS = 64;

// What the process tells of itself, in memory that both sides see.
struct Report {
  StepCounts counts;
  int descriptors_before;
  int descriptors_after;
  int blocks_left;
};

Report* shared_report()
{
  static void* const memory =
      mmap(nullptr, sizeof(Report), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
  if (memory == MAP_FAILED) abort();
  return new (memory) Report{};
}

struct Files {
  MemoryFile commands{"commands"};
  MemoryFile device{"device"};
  MemoryFile messages{"messages"};
  MemoryFile attempts{"attempts"};
};

int open_descriptors()
{
  int count = 0;
  for (int number = 0; number < DESCRIPTORS; ++number)
    if (fcntl(number, F_GETFD) >= 0) ++count;
  return count;
}

void place_standard_error(Files const& files, std::string const& instead)
{
  int const file = instead.empty() ? files.messages.number : open(instead.c_str(), O_WRONLY);
  if (instead == "-")
    close(2);
  else if (dup2(file, 2) != 2)
    abort();
  if (!instead.empty() && file >= 0) close(file);
}

// Nothing catches what the filter throws, as if it were a program of its own.
int run_filter(MemoryFile const& command_file, bool named) noexcept
{
  std::string words[] = {"photo-queue", "1", "user", "title", "1", ""};
  std::string path = "/proc/self/fd/" + std::to_string(command_file.number);
  char* arguments[8] = {};
  for (std::size_t i = 0; i < 6; ++i) arguments[i] = words[i].data();
  if (named) arguments[6] = path.data();
  int const status = filter_main(named ? 7 : 6, arguments);
  get_job_status();
  return status;
}

int play(Files const& files, Fault const& fault, FaultedWorld const& world, Report& report)
{
  OwnPrinter const printer(world.printer, files.device, files.attempts);
  report.descriptors_before = open_descriptors();
  watch_steps(fault, &report.counts);
  int const status = run_filter(files.commands, fault.step != Step::StandardInput);
  stop_watching();
  report.descriptors_after = open_descriptors();
  return status;
}

[[noreturn]] void become_filter(Files const& files, Fault const& fault, FaultedWorld const& world,
                                Report& report)
{
  rlimit const no_core{0, 0};
  setrlimit(RLIMIT_CORE, &no_core);
  alarm(DEADLINE);
  setenv("LC_ALL", "C", 1);
  place_standard_error(files, world.standard_error);
  if (dup2(files.device.number, 1) != 1) abort();

  int const blocks_before = living_blocks();
  int const status = play(files, fault, world, report);
  report.blocks_left = living_blocks() - blocks_before;
  exit(status);
}

std::vector<std::string> split_at_zeros(std::string const& text)
{
  std::vector<std::string> parts;
  for (std::size_t from = 0, to = 0; (to = text.find('\0', from)) != std::string::npos;
       from = to + 1)
    parts.push_back(text.substr(from, to - from));
  return parts;
}

}  // namespace

FaultedRun run_with(Fault const& fault, FaultedWorld const& world)
{
  Files const files;
  files.commands.append(world.commands);
  Report* const report = shared_report();
  std::fflush(stdout);
  pid_t const pid = fork();
  if (pid == 0) become_filter(files, fault, world, *report);

  int status = 0;
  if (waitpid(pid, &status, 0) != pid) abort();
  FaultedRun run;
  if (WIFEXITED(status)) run.exit_status = WEXITSTATUS(status);
  if (WIFSIGNALED(status)) run.signal = WTERMSIG(status);
  run.attempts = split_at_zeros(files.attempts.text());
  run.messages = files.messages.text();
  run.device = files.device.text();
  run.counts = report->counts;
  run.descriptors_before = report->descriptors_before;
  run.descriptors_after = report->descriptors_after;
  run.blocks_left = report->blocks_left;
  return run;
}
