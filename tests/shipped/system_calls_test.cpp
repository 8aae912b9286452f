// What the filter asks of the kernel once it has started.
#include <gtest/gtest.h>

#include <algorithm>
#include <set>

#include "tests/harness/same_text.h"
#include "tests/oracle/reasons.h"
#include "tests/oracle/run_text.h"
#include "tests/shipped/traced_run.h"

namespace {

using Names = std::set<std::string>;
using Environment = std::vector<std::string>;

// What the scheduler sets for every filter, and what it adds for the job.
Environment const SCHEDULERS{"CUPS_CACHEDIR=/var/cache/cups",
                             "CUPS_DATADIR=/usr/share/cups",
                             "CUPS_SERVERBIN=/usr/lib/cups",
                             "CUPS_SERVERROOT=/etc/cups",
                             "CUPS_STATEDIR=/run/cups",
                             "HOME=/var/spool/cups/tmp",
                             "TMPDIR=/var/spool/cups/tmp",
                             "USER=root",
                             "CHARSET=utf-8",
                             "LANG=en_US.UTF-8",
                             "DEVICE_URI=usb://Photo/Printer",
                             "PRINTER=photo-queue"};

// libcups looks its user up in the system's files when it is not told a home; else
// everything that could matter to a program is astray here.
Environment const ASTRAY{"CUPS_DATADIR=/nonexistent",
                         "CUPS_SERVER=127.0.0.1:9",
                         "CUPS_SERVERROOT=/nonexistent",
                         "HOME=/nonexistent",
                         "TMPDIR=/nonexistent",
                         "TZ=Asia/Tokyo",
                         "LANG=tr_TR.UTF-8",
                         "LC_ALL=tr_TR.UTF-8",
                         "LPDEST=other-queue",
                         "PRINTER=other-queue",
                         "DEVICE_URI=socket://127.0.0.1:9"};

// Where a processor has 32 bits, the calls that take its wider numbers have names of their own.
Names const TIME{"clock_nanosleep", "nanosleep", "clock_nanosleep_time64"};
Names const WAITING{"poll",     "ppoll",           "ppoll_time64", "select",
                    "pselect6", "pselect6_time64", "_newselect"};
Names const MEMORY{"brk", "mmap", "mmap2", "munmap", "mremap"};
// The standard library and libcups ask what kind of file they have.
Names const FILES{"newfstatat", "fstat",   "fstat64", "fstatat64", "statx",
                  "lseek",      "_llseek", "ioctl",   "fcntl",     "fcntl64"};
// libcups, once: is this program set to another user, is a thread waiting for the set-up?
Names const LIBRARY{"getuid",   "geteuid",   "getgid",   "getegid",   "futex",
                    "getuid32", "geteuid32", "getgid32", "getegid32", "futex_time64"};
Names const OPENING{"open", "openat"};
// There, too, a file has to be opened as one that may be large.
constexpr char const* TO_READ = sizeof(long) == 4 ? "O_RDONLY|O_LARGEFILE" : "O_RDONLY";

std::vector<SystemCall> calls_of(TracedRun const& run, Names const& names)
{
  std::vector<SystemCall> found;
  std::copy_if(run.calls.begin(), run.calls.end(), std::back_inserter(found),
               [&names](SystemCall const& call) { return names.contains(call.name); });
  return found;
}

// The first argument of each of these calls.
Names descriptors_of(TracedRun const& run, Names const& names)
{
  Names descriptors;
  for (SystemCall const& call : calls_of(run, names))
    descriptors.insert(call.arguments.substr(0, call.arguments.find(',')));
  return descriptors;
}

// Made once: the pause after the wake-up is real here.
TracedRun const& whole_run()
{
  static TracedRun const run = trace_filter(SCHEDULERS);
  return run;
}

TEST(WholeRun, CarriesOutBothDirectives)
{
  TracedRun const& run = whole_run();
  EXPECT_EQ(run.exit_status, 0);
  EXPECT_NE(run.messages.find("ATTR: marker-levels=40\n"), std::string::npos);
  std::string const reasons = reasons_text();
  EXPECT_TEXT(
      run.messages.substr(run.messages.size() - std::min(reasons.size(), run.messages.size())),
      reasons);
  std::string const failed_read = failed_read_text(0);
  std::size_t const result = failed_read.find("ret=");
  ASSERT_NE(result, std::string::npos) << failed_read;
  EXPECT_EQ(run.messages.find(failed_read.substr(0, result)), std::string::npos);
}

TEST(WholeRun, NeedsNoOtherSystemCallsThanThese)
{
  TracedRun const& run = whole_run();
  Names allowed{"rt_sigaction", "read", "write", "writev", "close", "exit_group"};
  for (Names const& more : {TIME, WAITING, MEMORY, FILES, LIBRARY, OPENING})
    allowed.insert(more.begin(), more.end());

  EXPECT_FALSE(run.calls.empty());
  for (SystemCall const& call : run.calls)
    EXPECT_TRUE(allowed.contains(call.name)) << call.name << "(" << call.arguments << ")";
}

TEST(WholeRun, OpensOnlyTheCommandFileAndOnlyToRead)
{
  TracedRun const& run = whole_run();
  auto const opened = calls_of(run, OPENING);
  ASSERT_EQ(opened.size(), 1U);
  EXPECT_EQ(opened[0].arguments, "AT_FDCWD, \"" + run.command_file + "\", " + TO_READ);
}

TEST(WholeRun, UsesEachDescriptorForItsOwnPurpose)
{
  TracedRun const& run = whole_run();
  EXPECT_EQ(descriptors_of(run, {"read"}), (Names{"3", "4", "5"}));
  EXPECT_EQ(descriptors_of(run, {"write"}), (Names{"1", "4"}));
  EXPECT_EQ(descriptors_of(run, {"writev"}), (Names{"2"}));
  EXPECT_EQ(descriptors_of(run, {"close"}), (Names{"5"}));
}

std::vector<std::string> names_of(TracedRun const& run)
{
  std::vector<std::string> names;
  for (SystemCall const& call : run.calls) names.push_back(call.name);
  return names;
}

TEST(WholeRun, IsTheSameInAnyEnvironment)
{
  TracedRun const& run = whole_run();
  TracedRun const other = trace_filter(ASTRAY);
  EXPECT_EQ(other.exit_status, 0);
  EXPECT_EQ(other.messages, run.messages);
  EXPECT_EQ(names_of(other), names_of(run));
}

}  // namespace
