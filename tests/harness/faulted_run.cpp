// The process: its files, its descriptors, and what it leaves.
#include "tests/harness/faulted_run.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <new>

#include "protocol/queries.h"
#include "tests/harness/counted_allocations.h"
#include "tests/harness/faulted_calls.h"

int filter_main(int argc, char* argv[]);

namespace {

constexpr unsigned DEADLINE = 60;  // seconds
constexpr int DESCRIPTORS = 64;
constexpr int SIDE_CHANNEL = 4;

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

// A file in memory, numbered above what the filter uses.
class File {
public:
  explicit File(char const* name)
  {
    int const low = memfd_create(name, 0);
    number = fcntl(low, F_DUPFD, 50);
    close(low);
    if (number < 0) abort();
  }
  File(File const&) = delete;
  File& operator=(File const&) = delete;
  ~File() { close(number); }

  void append(std::string_view text) const
  {
    auto const size = static_cast<ssize_t>(text.size());
    if (syscall(SYS_write, number, text.data(), text.size()) != size) abort();
  }

  [[nodiscard]] std::string text() const
  {
    std::string all(static_cast<std::size_t>(lseek(number, 0, SEEK_END)), '\0');
    if (pread(number, all.data(), all.size(), 0) != static_cast<ssize_t>(all.size())) abort();
    return all;
  }

  int number = -1;
};

struct Files {
  File commands{"commands"};
  File device{"device"};
  File messages{"messages"};
  File attempts{"attempts"};
};

// Backend and printer, played inside the filter's own process: they move when it waits.
class Play {
public:
  Play(PrinterScript const& script, Files const& all_files) : printer(script), files(all_files) {}

  // A message is kept before it is written, with a zero byte behind it.
  std::optional<Outcome> meet(Call const& call) const
  {
    if (call.kind == Call::Kind::Message) {
      files.attempts.append(call.text);
      files.attempts.append({"", 1});
    }
    auto const failure = outcome_of_fault(call);
    bool const pauses = call.kind == Call::Kind::Sleep || call.kind == Call::Kind::Pause;
    return !failure && pauses ? Outcome{} : failure;
  }

  void note(Call const& call)
  {
    if (call.kind == Call::Kind::Flush) uncounted([this] { hear_device(); });
  }

  std::optional<int> begin(Wait wait)
  {
    auto const failure = outcome_of_fault(wait);
    if (!failure && wait == Wait::ForAnswer) uncounted([this] { answer_request(); });
    if (!failure && wait == Wait::ForReply) uncounted([this] { send_reply(); });
    return failure;
  }

private:
  // The played printer's own steps do not count.
  template <typename Move>
  void uncounted(Move const& move) const
  {
    StepCounts* const counts = stop_watching();
    move();
    go_on_watching(counts);
  }

  void hear_device()
  {
    std::string const all = files.device.text();
    printer.hear_device(all.substr(heard));
    heard = all.size();
  }

  // Only the last request counts, a torn one gets no answer, and what the filter has not fetched
  // by then comes too late.
  void answer_request()
  {
    std::string request;
    for (std::string next; !(next = receive(channels.side_channel.get())).empty();) request = next;
    if (request.empty()) return;
    while (!receive(SIDE_CHANNEL).empty()) continue;
    if (request.size() != 4) return;
    printer.hear_request(request);
    std::string const answer = printer.side_channel_feed().bytes;
    send(channels.side_channel.get(), answer.data(), answer.size(), 0);
  }

  void send_reply()
  {
    std::string const reply = printer.back_channel_feed().bytes;
    auto const size = static_cast<ssize_t>(reply.size());
    if (write(channels.back_channel.get(), reply.data(), reply.size()) != size) abort();
  }

  // Packets keep the borders between requests, and between answers.
  static std::string receive(int descriptor)
  {
    std::array<char, 64> packet;
    ssize_t const size = recv(descriptor, packet.data(), packet.size(), MSG_DONTWAIT);
    return {packet.data(), static_cast<std::size_t>(size > 0 ? size : 0)};
  }

  ScriptedPrinter printer;
  Files const& files;
  std::size_t heard = 0;
  OwnChannels channels{SOCK_SEQPACKET, [this](Wait wait) { return begin(wait); }};
  OutsideCalls calls{[this](Call const& call) { return meet(call); },
                     [this](Call const& call, Outcome const& /*outcome*/) { note(call); }};
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
int run_filter(File const& command_file, bool named) noexcept
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
  Play const play(world.printer, files);
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
