// Asking when the queue, its job or one request is not as it should be: one sentence, and no job
// of ours is left behind.
#include <algorithm>
#include <csignal>

#include "admin/status_command.h"
#include "tests/admin/run_command.h"

namespace {

constexpr char const* ATTACHED = "*cupsCommands: \"ReportLevels ReportStatus\"\n";
constexpr Mishap MISHAPS[] = {Mishap::Forbidden,  Mishap::NotFound,  Mishap::Busy, Mishap::NoAnswer,
                              Mishap::AnswerLost, Mishap::BrokenOff, Mishap::Empty};
constexpr JobRow PENDING{IPP_JSTATE_PENDING, 1000};
constexpr JobRow RUNNING{IPP_JSTATE_PROCESSING, 1000};
constexpr JobRow VALUES_IN{IPP_JSTATE_PROCESSING, 2000};

FakeScheduler attached_queue()
{
  FakeScheduler fake;
  fake.ppd = ATTACHED;
  fake.job_rows = {PENDING, RUNNING, VALUES_IN};
  return fake;
}

int ask_photo(Scheduler const& scheduler)
{
  AskOptions options;
  options.queues = {"photo"};
  return run_ask(scheduler, options);
}

// What asking complains of; nothing if it went well.
std::string sentence(FakeScheduler& fake)
{
  std::string const errors = run_command(fake, ask_photo).errors;
  return errors.empty() ? errors : errors.substr(17, errors.size() - 18);
}

std::string sentence(JobRow row)
{
  FakeScheduler fake = attached_queue();
  fake.job_rows = {row};
  return sentence(fake);
}

void try_every_request(bool goes_on)
{
  for (Mishap const mishap : MISHAPS) {
    for (int number = 1;; ++number) {
      SCOPED_TRACE("request " + std::to_string(number) + ", mishap "
                   + std::to_string(static_cast<int>(mishap)) + (goes_on ? ", for ever" : ""));
      FakeScheduler fake = attached_queue();
      fake.mishap = mishap;
      fake.failing_request = number;
      fake.goes_on = goes_on;
      Ended const run = run_command(fake, ask_photo);
      expect_one_line(run);
      bool const is_known = run.status != 0 && fake.job != 0 && !goes_on && number != 3;
      if (is_known && has_part(run.errors, "tells nothing about its job")) {
        EXPECT_TRUE(fake.is_job_cancelled);
      }
      if (static_cast<int>(fake.requests.size()) < number) break;
    }
  }
}

}  // namespace

TEST(AskFaults, OneRequestGoesWrong) { try_every_request(false); }

TEST(AskFaults, EveryRequestFromOneOnGoesWrong) { try_every_request(true); }

TEST(AskFaults, AGoodRunMakesTheseRequests)
{
  FakeScheduler fake = attached_queue();
  fake.job_rows = {VALUES_IN, {IPP_JSTATE_COMPLETED, 2000}};
  EXPECT_EQ(sentence(fake), "");
  EXPECT_EQ(fake.requests,
            (std::vector<ipp_op_t>{IPP_OP_GET_PRINTER_ATTRIBUTES, IPP_OP_GET_JOBS, IPP_OP_PRINT_JOB,
                                   IPP_OP_GET_JOB_ATTRIBUTES, IPP_OP_GET_PRINTER_ATTRIBUTES,
                                   IPP_OP_GET_JOB_ATTRIBUTES, IPP_OP_GET_PRINTER_ATTRIBUTES,
                                   IPP_OP_GET_PRINTER_ATTRIBUTES}));
}

// A printer that is off keeps its own queue waiting, and not those behind it.
TEST(AskFaults, ManyAreAskedAtTheSameTime)
{
  FakeScheduler fake = attached_queue();
  fake.job_rows = {{IPP_JSTATE_COMPLETED, 2000}};
  Ended const run = run_command(fake, [](Scheduler const& scheduler) {
    AskOptions options;
    options.queues.assign(60, "photo");
    return run_ask(scheduler, options);
  });
  EXPECT_EQ(run.status, 0) << run.errors;
  auto const first_look = std::ranges::find(fake.requests, IPP_OP_GET_JOB_ATTRIBUTES);
  EXPECT_EQ(std::count(fake.requests.begin(), first_look, IPP_OP_PRINT_JOB), 50);
  EXPECT_EQ(std::ranges::count(fake.requests, IPP_OP_PRINT_JOB), 60);
}

TEST(AskFaults, OneThatBringsNothingIsToldAtItsPlaceAmongTheOthers)
{
  FakeScheduler fake = attached_queue();
  // The first is the last to end.
  fake.job_rows = {PENDING,
                   {IPP_JSTATE_COMPLETED, 2000},
                   {IPP_JSTATE_CANCELED, 2000},
                   {IPP_JSTATE_ABORTED, 2000}};
  Ended const run = run_command(fake, [](Scheduler const& scheduler) {
    AskOptions options;
    options.queues = {"photo", "photo", "photo"};
    return run_ask(scheduler, options);
  });
  EXPECT_EQ(run.status, 1);
  EXPECT_EQ(run.errors,
            "velmoctl: photo: its job 7 failed; the scheduler's error_log says why\n"
            "velmoctl: photo: its job 7 was cancelled\n");
}

TEST(AskFaults, TheValuesAreInBeforeTheJobEnds)
{
  FakeScheduler fake = attached_queue();
  EXPECT_EQ(sentence(fake), "");
  EXPECT_FALSE(fake.is_job_cancelled);
}

// As with PreserveJobHistory No, where a job is forgotten when it has ended.
TEST(AskFaults, AJobThatIsForgottenHasBroughtWhatIsNewerThanItself)
{
  auto const forgotten = [](int level_time) {
    FakeScheduler fake = attached_queue();
    fake.failing_request = 4;
    fake.mishap = Mishap::NotFound;
    fake.before_request = [&, level_time](int number, ipp_op_t /*operation*/) {
      if (number == 4) fake.level_time = level_time;
    };
    return sentence(fake);
  };
  EXPECT_EQ(forgotten(3000), "");  // the scheduler's time when the job was sent
  EXPECT_EQ(forgotten(2999), "the scheduler tells nothing about its job any more");
}

TEST(AskFaults, EachStateOfTheJobHasItsSentence)
{
  EXPECT_EQ(sentence({IPP_JSTATE_CANCELED, 1000}), "its job 7 was cancelled");
  EXPECT_EQ(sentence({IPP_JSTATE_ABORTED, 1000}),
            "its job 7 failed; the scheduler's error_log says why");
  EXPECT_EQ(sentence({IPP_JSTATE_STOPPED, 1000}),
            "its job 7 failed; the scheduler's error_log says why");
  EXPECT_EQ(sentence(PENDING),
            "was busy for 30 s, so its printer could not be asked; try again later");
  EXPECT_EQ(sentence(RUNNING),
            "has not brought its values within 30 s; velmoctl status shows them later");
}

TEST(AskFaults, AJobThatWaitsIsTakenBackAndOneThatRunsIsNot)
{
  FakeScheduler waiting = attached_queue();
  waiting.job_rows = {PENDING};
  sentence(waiting);
  EXPECT_TRUE(waiting.is_job_cancelled);
  FakeScheduler running = attached_queue();
  running.job_rows = {RUNNING};
  sentence(running);
  EXPECT_FALSE(running.is_job_cancelled);
}

TEST(AskFaults, AJobThatWaitsAlreadyIsJoinedAndLeftAlone)
{
  FakeScheduler fake = attached_queue();
  fake.is_job_waiting = true;
  fake.job = 5;
  fake.job_rows = {PENDING};
  EXPECT_TRUE(has_part(sentence(fake), "was busy for 30 s"));
  EXPECT_EQ(fake.job, 5);
  EXPECT_FALSE(fake.is_job_cancelled);
}

TEST(AskFaults, AQueueThatStopsMeanwhileIsNotWaitedFor)
{
  FakeScheduler fake = attached_queue();
  fake.job_rows = {PENDING};
  fake.before_request = [&](int number, ipp_op_t /*operation*/) {
    if (number < 7) return;
    fake.state = IPP_PSTATE_STOPPED;
    fake.message = "out of paper";
  };
  EXPECT_EQ(sentence(fake), "is stopped (out of paper); cupsenable it, then velmoctl ask");
  EXPECT_TRUE(fake.is_job_cancelled);
}

TEST(AskFaults, EachReasonToDeclineHasItsSentence)
{
  auto const declined = [](auto const& change) {
    FakeScheduler fake = attached_queue();
    change(fake);
    std::string text = sentence(fake);
    EXPECT_EQ(fake.requests.size(), 1u) << "no job is sent";
    return text;
  };
  EXPECT_EQ(declined([](FakeScheduler& it) { it.is_class = true; }),
            "is a class; name the queues in it");
  EXPECT_EQ(declined([](FakeScheduler& it) { it.ppd = "*% none"; }),
            "is not attached, so nothing asks its printer; see velmoctl attach");
  EXPECT_EQ(declined([](FakeScheduler& it) { it.state = IPP_PSTATE_STOPPED; }),
            "is stopped; cupsenable it, then velmoctl ask");
  EXPECT_EQ(declined([](FakeScheduler& it) { it.accepting = false; }),
            "rejects jobs; cupsaccept lets it take them");
}

namespace {

sig_atomic_t volatile signals = 0;

void count_signal(int /*signal*/) { signals = signals + 1; }

}  // namespace

TEST(AskFaults, ASignalTakesTheJobBackBeforeItEndsTheProgram)
{
  for (int const signal : {SIGINT, SIGTERM, SIGHUP}) {
    for (int at = 2; at <= 9; ++at) {
      SCOPED_TRACE("signal " + std::to_string(signal) + " before request " + std::to_string(at));
      FakeScheduler fake = attached_queue();
      fake.job_rows = {PENDING, PENDING, RUNNING, RUNNING};
      fake.before_request = [&](int number, ipp_op_t operation) {
        if (number == at) raise(signal);
        if (operation == IPP_OP_CANCEL_JOB) {
          EXPECT_EQ(signals, 0) << "the job is taken back first";
        }
      };
      signals = 0;
      auto* const before = std::signal(signal, count_signal);
      sentence(fake);
      std::signal(signal, before);
      EXPECT_EQ(signals, 1);
      EXPECT_TRUE(fake.is_job_cancelled);
    }
  }
}
