// Attaching and detaching when one request, or each from one on, goes wrong: the queue has its
// old PPD file or the new one, and what is said is so.
#include "admin/attach_command.h"
#include "tests/admin/run_command.h"

namespace {

constexpr char const* OLD = PLAIN_PPD;
constexpr char const* JAM = "com.velmo-error0001";
constexpr Mishap MISHAPS[] = {Mishap::Forbidden,  Mishap::NotFound,  Mishap::Busy, Mishap::NoAnswer,
                              Mishap::AnswerLost, Mishap::BrokenOff, Mishap::Empty};

std::string attached_ppd() { return attach(OLD, {}).ppd; }

AttachOptions options()
{
  AttachOptions options;
  options.no_ask = true;
  options.queues = {"photo"};
  return options;
}

int attach_photo(Scheduler const& scheduler) { return run_attach(scheduler, options()); }
int detach_photo(Scheduler const& scheduler) { return run_detach(scheduler, options()); }

// A queue that is paused, holds new jobs and has a printer's error.
FakeScheduler paused_queue(std::string ppd)
{
  FakeScheduler fake;
  fake.ppd = std::move(ppd);
  fake.reasons = {"paused", "hold-new-jobs", JAM};
  fake.state = IPP_PSTATE_STOPPED;
  fake.message = "for a test";
  return fake;
}

struct Change {
  char const* name;
  int (*command)(Scheduler const&);
  std::string before;
  std::string after;
};

// What is said of the PPD file is what the scheduler has.
void expect_truth(Ended const& run, FakeScheduler const& fake, Change const& change)
{
  if (has_part(run.errors, "is not known")) {
    EXPECT_TRUE(fake.ppd == change.before || fake.ppd == change.after);
    return;
  }
  bool const is_new = run.status == 0 || has_part(run.errors, "the PPD file was changed, but")
                      || has_part(run.errors, "the new PPD file is still there");
  EXPECT_EQ(fake.ppd, is_new ? change.after : change.before) << run.errors;
  if (!fake.has("paused") || !fake.has("hold-new-jobs")) {
    EXPECT_TRUE(has_part(run.errors, "its pause could not be marked again")
                || has_part(run.errors, "the queue cannot be looked at")
                || has_part(run.errors, "is still there"))
        << run.errors;
  } else if (!fake.has(JAM) && !is_new) {
    EXPECT_TRUE(has_part(run.errors, JAM) || has_part(run.errors, "could not be marked"))
        << run.errors;
  }
}

void try_every_request(Change const& change, bool goes_on)
{
  for (Mishap const mishap : MISHAPS) {
    for (int number = 1;; ++number) {
      SCOPED_TRACE(std::string(change.name) + ", request " + std::to_string(number) + ", mishap "
                   + std::to_string(static_cast<int>(mishap)) + (goes_on ? ", for ever" : ""));
      FakeScheduler fake = paused_queue(change.before);
      fake.mishap = mishap;
      fake.failing_request = number;
      fake.goes_on = goes_on;
      Ended const run = run_command(fake, change.command);
      expect_one_line(run);
      expect_truth(run, fake, change);
      if (static_cast<int>(fake.requests.size()) < number) break;
    }
  }
}

// What is said when one request goes wrong.
std::string sentence(int (*command)(Scheduler const&), FakeScheduler fake, int request,
                     Mishap mishap)
{
  fake.failing_request = request;
  fake.mishap = mishap;
  std::string const errors = run_command(fake, command).errors;
  return errors.empty() ? errors : errors.substr(17, errors.size() - 18);
}

std::string attach_sentence(int request, Mishap mishap)
{
  return sentence(attach_photo, paused_queue(OLD), request, mishap);
}

}  // namespace

TEST(ChangeFaults, OneRequestGoesWrong)
{
  try_every_request({"attach", attach_photo, OLD, attached_ppd()}, false);
  try_every_request({"detach", detach_photo, attached_ppd(), OLD}, false);
}

TEST(ChangeFaults, EveryRequestFromOneOnGoesWrong)
{
  try_every_request({"attach", attach_photo, OLD, attached_ppd()}, true);
  try_every_request({"detach", detach_photo, attached_ppd(), OLD}, true);
}

TEST(ChangeFaults, AGoodRunMakesTheseRequests)
{
  FakeScheduler fake = paused_queue(OLD);
  EXPECT_EQ(run_command(fake, attach_photo).status, 0);
  EXPECT_EQ(fake.requests,
            (std::vector<ipp_op_t>{
                IPP_OP_GET_PRINTER_ATTRIBUTES, IPP_OP_CUPS_GET_PPD, IPP_OP_GET_PRINTER_ATTRIBUTES,
                IPP_OP_CUPS_GET_PPD, IPP_OP_CUPS_ADD_MODIFY_PRINTER, IPP_OP_GET_PRINTER_ATTRIBUTES,
                IPP_OP_HOLD_NEW_JOBS, IPP_OP_PAUSE_PRINTER, IPP_OP_CUPS_GET_PPD}));
}

TEST(ChangeFaults, EachHasItsSentence)
{
  EXPECT_EQ(attach_sentence(1, Mishap::NotFound),
            "there is no such queue; velmoctl list names those there are");
  EXPECT_EQ(attach_sentence(1, Mishap::Busy),
            "the scheduler answers server-error-busy (come back later)");
  EXPECT_EQ(attach_sentence(1, Mishap::AnswerLost),
            "the scheduler gave no answer; its error_log says why");
  EXPECT_EQ(attach_sentence(1, Mishap::Empty), "the scheduler says nothing about this queue");
  EXPECT_EQ(attach_sentence(2, Mishap::NotFound),
            "the queue has no PPD file, so it cannot name a filter; lpadmin -P gives it one");
  EXPECT_EQ(attach_sentence(2, Mishap::BrokenOff),
            "the scheduler broke off in the PPD file; try again");
  EXPECT_EQ(attach_sentence(5, Mishap::Forbidden),
            "the scheduler does not let the user " + std::string(cupsUser())
                + " do this; run it as root or as a user whom its policy names; the PPD file is "
                  "as it was");
  EXPECT_EQ(attach_sentence(5, Mishap::NoAnswer),
            "the scheduler gave no answer; its error_log says why; the PPD file is as it was");
  EXPECT_EQ(attach_sentence(6, Mishap::NoAnswer),
            "the queue cannot be looked at: the scheduler gave no answer; its error_log says why; "
            "the old PPD file was given back, but the scheduler forgot com.velmo-error0001");
  EXPECT_EQ(attach_sentence(8, Mishap::Busy),
            "the PPD file was changed, but its pause could not be marked again: the scheduler "
            "answers server-error-busy (come back later)");
  EXPECT_EQ(attach_sentence(9, Mishap::NoAnswer),
            "the new PPD file cannot be read back: the scheduler gave no answer; its error_log "
            "says why; the old PPD file was given back, but the scheduler forgot "
            "com.velmo-error0001");
}

TEST(ChangeFaults, AnUploadWhoseAnswerWasLostIsLookedAt)
{
  EXPECT_EQ(attach_sentence(5, Mishap::AnswerLost), "");
}

TEST(ChangeFaults, AnUploadThatCannotBeStoredLosesNoPause)
{
  FakeScheduler fake = paused_queue(OLD);
  fake.failing_request = 5;
  fake.mishap = Mishap::Busy;
  fake.before_request = [&](int number, ipp_op_t /*operation*/) {
    if (number == 5) fake.reasons.clear();
  };
  Ended const run = run_command(fake, attach_photo);
  EXPECT_TRUE(fake.has("paused"));
  EXPECT_TRUE(fake.has("hold-new-jobs"));
  EXPECT_TRUE(has_part(run.errors,
                       "the PPD file is as it was, but the scheduler forgot "
                       "com.velmo-error0001\n"))
      << run.errors;
}

TEST(ChangeFaults, AnOldFileThatCannotBeGivenBackIsSaid)
{
  FakeScheduler fake = paused_queue(OLD);
  fake.before_request = [&](int number, ipp_op_t /*operation*/) {
    if (number == 6) fake.reasons.emplace_back("cups-missing-filter-warning");
  };
  fake.failing_request = 10;
  fake.mishap = Mishap::Busy;
  EXPECT_EQ(run_command(fake, attach_photo).errors,
            "velmoctl: photo: the scheduler cannot use a filter of the queue "
            "(cups-missing-filter-warning); install the package or mend the filter's owner and "
            "rights; the new PPD file is still there, for the old one could not be given back "
            "(the scheduler answers server-error-busy (come back later)); velmoctl detach takes "
            "out what was put in\n");
  EXPECT_EQ(fake.ppd, attached_ppd());
  EXPECT_TRUE(fake.has("paused"));
}

TEST(ChangeFaults, AnOldFileThatIsPerhapsGivenBackIsSaid)
{
  FakeScheduler fake = paused_queue(OLD);
  fake.before_request = [&](int number, ipp_op_t /*operation*/) {
    if (number == 6) fake.reasons.emplace_back("cups-missing-filter-warning");
  };
  fake.failing_request = 10;
  fake.goes_on = true;
  fake.mishap = Mishap::NoAnswer;
  EXPECT_TRUE(has_part(run_command(fake, attach_photo).errors,
                       "; whether the old PPD file was given back is not known (the scheduler gave "
                       "no answer; its error_log says why); velmoctl list tells\n"));
}

TEST(ChangeFaults, AQueueThatBeginsToPrintIsLeftAlone)
{
  FakeScheduler fake = paused_queue(OLD);
  fake.before_request = [&](int number, ipp_op_t /*operation*/) {
    if (number == 3) fake.state = IPP_PSTATE_PROCESSING;
  };
  EXPECT_TRUE(has_part(run_command(fake, attach_photo).errors, "say --while-printing\n"));
  EXPECT_EQ(fake.ppd, OLD);
}

TEST(ChangeFaults, AReasonThatIsThereAgainIsNotForgotten)
{
  FakeScheduler fake = paused_queue(OLD);
  EXPECT_TRUE(has_part(run_command(fake, attach_photo).said, "forgot com.velmo-error0001;"));
  fake = paused_queue(OLD);
  fake.before_request = [&](int number, ipp_op_t /*operation*/) {
    if (number == 6) fake.reasons.emplace_back(JAM);
  };
  Ended const run = run_command(fake, attach_photo);
  EXPECT_EQ(run.status, 0);
  EXPECT_FALSE(has_part(run.said, "forgot")) << run.said;
}

TEST(ChangeFaults, OthersWhoChangeItAllTheTime)
{
  FakeScheduler fake = paused_queue(OLD);
  fake.before_request = [&](int number, ipp_op_t operation) {
    if (operation == IPP_OP_CUPS_GET_PPD) fake.ppd = OLD + ("*% " + std::to_string(number) + "\n");
  };
  EXPECT_EQ(run_command(fake, attach_photo).errors,
            "velmoctl: photo: others change its PPD file all the time, now it is not as wanted; "
            "try again when they have done\n");
}
