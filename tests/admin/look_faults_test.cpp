// Looking at queues when one request goes wrong.
#include "admin/list_command.h"
#include "admin/status_command.h"
#include "tests/admin/run_command.h"

namespace {

constexpr char const* ATTACHED =
    "*% velmoctl begin\n*cupsFilter: \"application/vnd.cups-command 0 commandtovelmo\"\n"
    "*cupsCommands: \"ReportLevels ReportStatus\"\n*% velmoctl end\n";

FakeScheduler queue_with_error(int failing_request, Mishap mishap)
{
  FakeScheduler fake;
  fake.ppd = ATTACHED;
  fake.reasons = {"com.velmo-error0001"};
  fake.failing_request = failing_request;
  fake.mishap = mishap;
  return fake;
}

Ended list(int failing_request, Mishap mishap)
{
  FakeScheduler fake = queue_with_error(failing_request, mishap);
  return run_command(fake, [](Scheduler const& it) { return run_list(it, false); });
}

Ended status(StatusOptions const& options, int failing_request, Mishap mishap)
{
  FakeScheduler fake = queue_with_error(failing_request, mishap);
  return run_command(fake, [&](Scheduler const& it) { return run_status(it, options); });
}

}  // namespace

TEST(LookFaults, AListThatCannotBeHadIsSaid)
{
  Ended const run = list(1, Mishap::Busy);
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.errors, "velmoctl: the scheduler answers server-error-busy (come back later)\n");
}

TEST(LookFaults, AListSaysThatThereAreNoQueues)
{
  Ended const run = list(1, Mishap::NotFound);
  EXPECT_EQ(run.status, 0);
  EXPECT_EQ(run.said + run.errors, "The scheduler has no queues; lpadmin makes them.\n");
}

TEST(LookFaults, AListTellsOfAPpdFileThatCannotBeRead)
{
  EXPECT_EQ(list(0, Mishap::None).said, "photo: attached\n");
  EXPECT_EQ(list(2, Mishap::NotFound).said, "photo: not attached\n");
  EXPECT_EQ(list(2, Mishap::BrokenOff).said,
            "photo: broken: its PPD file cannot be read: the scheduler broke off in the PPD file; "
            "try again\n");
  EXPECT_EQ(list(2, Mishap::Empty).said,
            "photo: broken: its PPD file cannot be read: the scheduler gives an empty PPD file; "
            "give it a new one\n");
}

TEST(LookFaults, AListWarnsOfSettingsThatItWasGivenWhole)
{
  FakeScheduler fake = queue_with_error(0, Mishap::None);
  auto const listed = [&fake] {
    return run_command(fake, [](Scheduler const& it) { return run_list(it, false); });
  };
  EXPECT_EQ(listed().errors, "");
  fake.conf = "FilterLimit 99\n";
  EXPECT_TRUE(listed().errors.starts_with("velmoctl: FilterLimit 99 is too little for 1 attached "))
      << listed().errors;
  EXPECT_EQ(listed().said, "photo: attached\n");
  EXPECT_EQ(listed().status, 0);
  fake.is_conf_broken_off = true;
  EXPECT_EQ(listed().errors, "");
}

TEST(LookFaults, AStatusWithoutPpdFileHasKeywordsOnly)
{
  StatusOptions options;
  options.queues = {"photo"};
  Ended const run = status(options, 2, Mishap::NoAnswer);
  EXPECT_EQ(run.status, 0);
  EXPECT_TRUE(has_part(run.said, "  Reason   com.velmo-error0001  (code 06 02 02)\n")) << run.said;
}

TEST(LookFaults, AStatusThatCannotBeHadIsSaid)
{
  StatusOptions options;
  EXPECT_EQ(status(options, 1, Mishap::NoAnswer).errors,
            "velmoctl: the scheduler gave no answer; its error_log says why\n");
  options.queues = {"photo"};
  expect_one_line(status(options, 1, Mishap::NoAnswer));
  EXPECT_EQ(status(options, 1, Mishap::NoAnswer).status, 1);
}

TEST(LookFaults, ACheckThatCannotBeMadeIsUnknown)
{
  StatusOptions options;
  options.check = true;
  options.queues = {"photo"};
  for (Mishap const mishap : {Mishap::Forbidden, Mishap::NotFound, Mishap::NoAnswer}) {
    Ended const run = status(options, 1, mishap);
    EXPECT_EQ(run.status, CHECK_UNKNOWN);
    EXPECT_TRUE(run.said.starts_with("VELMO UNKNOWN - photo: ")) << run.said;
    EXPECT_EQ(run.errors, "");
  }
}
