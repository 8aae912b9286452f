// Every call behind a file in memory fails once: it is said, and the queue is as it was.
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include "admin/attach_command.h"
#include "admin/list_command.h"
#include "admin/memory_file.h"
#include "admin/server_settings.h"
#include "admin/status_command.h"
#include "tests/admin/run_command.h"

namespace {

enum class Call { Memfd, Write, Stat, Read, Dup };

struct FailingCall {
  Call call = Call::Memfd;
  int number = 0;  // counted from 1; 0: none
} failing;
int calls = 0;

bool fails(Call call) { return call == failing.call && ++calls == failing.number; }

}  // namespace

// NOLINTBEGIN(clang-diagnostic-reserved-identifier)
extern "C" {

int __real_memfd_create(char const* name, unsigned flags);
ssize_t __real_write(int descriptor, void const* data, std::size_t size);
int __real_fstat(int descriptor, struct stat* status);
ssize_t __real_pread(int descriptor, void* data, std::size_t size, off_t offset);
int __real_dup(int descriptor);

int __wrap_memfd_create(char const* name, unsigned flags)
{
  return fails(Call::Memfd) ? -1 : __real_memfd_create(name, flags);
}
ssize_t __wrap_write(int descriptor, void const* data, std::size_t size)
{
  return fails(Call::Write) ? -1 : __real_write(descriptor, data, size);
}
int __wrap_fstat(int descriptor, struct stat* status)
{
  return fails(Call::Stat) ? -1 : __real_fstat(descriptor, status);
}
ssize_t __wrap_pread(int descriptor, void* data, std::size_t size, off_t offset)
{
  return fails(Call::Read) ? -1 : __real_pread(descriptor, data, size, offset);
}
int __wrap_dup(int descriptor) { return fails(Call::Dup) ? -1 : __real_dup(descriptor); }

}  // extern "C"
// NOLINTEND(clang-diagnostic-reserved-identifier)

namespace {

// A run in which one call fails.
Ended run_with(FakeScheduler& fake, FailingCall const& call,
               std::function<int(Scheduler const&)> const& command)
{
  return run_command(fake, [&](Scheduler const& scheduler) {
    failing = call;
    calls = 0;
    int const status = command(scheduler);
    failing = {};
    return status;
  });
}

int attach_photo(Scheduler const& scheduler)
{
  AttachOptions options;
  options.no_ask = true;
  options.queues = {"photo"};
  return run_attach(scheduler, options);
}

int ask_photo(Scheduler const& scheduler)
{
  AskOptions options;
  options.queues = {"photo"};
  return run_ask(scheduler, options);
}

// Lets each use of a call fail in turn. Returns how many there were.
int try_every_use(Call call)
{
  for (int number = 1;; ++number) {
    SCOPED_TRACE("call " + std::to_string(static_cast<int>(call)) + ", use "
                 + std::to_string(number));
    FakeScheduler fake;
    fake.ppd = PLAIN_PPD;
    Ended const run = run_with(fake, {call, number}, attach_photo);
    expect_one_line(run);
    if (calls < number) return number - 1;
    EXPECT_TRUE(has_part(run.errors, NO_MEMORY_FILE) || run.status == 0) << run.errors;
    EXPECT_EQ(fake.ppd == PLAIN_PPD, run.status != 0) << run.errors;
  }
}

}  // namespace

TEST(MemoryFaults, AttachingSaysWhatFailed)
{
  // Two looks, the check, the upload and the look afterwards.
  EXPECT_EQ(try_every_use(Call::Memfd), 5);
  EXPECT_EQ(try_every_use(Call::Write), 2);
  EXPECT_EQ(try_every_use(Call::Stat), 3);
  EXPECT_EQ(try_every_use(Call::Read), 3);
  EXPECT_EQ(try_every_use(Call::Dup), 1);
}

TEST(MemoryFaults, AskingSaysWhatFailed)
{
  for (Call const call : {Call::Memfd, Call::Write}) {
    FakeScheduler fake;
    fake.ppd = "*cupsCommands: \"ReportLevels ReportStatus\"\n";
    Ended const run = run_with(fake, {call, 1}, ask_photo);
    EXPECT_EQ(run.status, 1);
    EXPECT_EQ(run.errors, std::string("velmoctl: photo: ") + NO_MEMORY_FILE + "\n");
    EXPECT_EQ(fake.job, 0);
  }
}

TEST(MemoryFaults, AListWithoutThemWarnsOfNoSettings)
{
  // The first is that of the PPD file, where there is one.
  for (FailingCall const call : {FailingCall{Call::Memfd, 2}, FailingCall{Call::Memfd, 3},
                                 FailingCall{Call::Read, 2}, FailingCall{Call::Dup, 1}}) {
    FakeScheduler fake;
    fake.ppd =
        "*cupsFilter: \"application/vnd.cups-command 0 commandtovelmo\"\n"
        "*cupsCommands: \"ReportLevels ReportStatus\"\n";
    fake.conf = "FilterLimit 99\n";
    Ended const run = run_with(fake, call, [](Scheduler const& it) { return run_list(it, false); });
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.said, "photo: attached\n");
    EXPECT_EQ(run.errors, "");
  }
}

TEST(MemoryFaults, SettingsThatCannotBeReadAreNone)
{
  for (FailingCall const call :
       {FailingCall{Call::Memfd, 1}, FailingCall{Call::Write, 1}, FailingCall{Call::Dup, 1}}) {
    failing = call;
    calls = 0;
    EXPECT_FALSE(read_settings("MaxJobs 1\n").has_value()) << static_cast<int>(call.call);
    failing = {};
  }
}
