// The one way in which velmoctl changes a queue: read its PPD file, change it, give it back,
// look whether the scheduler makes of it what was meant.
#include "admin/change_ppd.h"

#include "admin/ppd_check.h"
#include "admin/ppd_diff.h"
#include "admin/ppd_transfer.h"
#include "admin/queue_state.h"
#include "admin/signal_hold.h"
#include "admin/verdict.h"

namespace {

using Outcome = ChangeResult::Outcome;

constexpr int MOST_ATTEMPTS = 3;

ChangeResult not_done(std::string why, std::vector<std::string> lines = {})
{
  return {Outcome::NotDone, std::move(why), std::move(lines), {}};
}

// The queue after an upload, whether that was carried out or not.
struct Settled {
  std::optional<Queue> queue;
  std::string problem;  // empty if its pause is as it was
};

// A scheduler that cannot store what is sent forgets the queue's reasons all the same.
Settled settle(Scheduler const& scheduler, Queue const& before)
{
  QueueAnswer now = get_queue(scheduler, before.name);
  if (!now.queue) return {{}, "the queue cannot be looked at: " + now.error};
  std::string problem = restore_state(scheduler, before, *now.queue);
  return {std::move(now.queue), std::move(problem)};
}

// What is gone although the PPD file is the old one, as the end of a sentence.
std::string but_lost(Queue const& before, Settled const& settled)
{
  if (!settled.problem.empty()) return ", but " + settled.problem;
  std::string text;
  for (std::string const& reason : lost_reasons(before, *settled.queue))
    text += (text.empty() ? ", but the scheduler forgot " : " ") + reason;
  return text;
}

// Gives the old file back, and says what came of it.
std::string given_back(Scheduler const& scheduler, Queue const& before, std::string const& old)
{
  std::string error = put_ppd(scheduler, before.name, old);
  Settled const settled = settle(scheduler, before);
  PpdAnswer const now = get_ppd(scheduler, before.name);
  if (now.ppd == old) return "the old PPD file was given back" + but_lost(before, settled);
  if (!now.ppd)
    return "whether the old PPD file was given back is not known (" + now.error
           + "); velmoctl list tells";
  if (error.empty()) error = "it does not read the same";
  return "the new PPD file is still there, for the old one could not be given back (" + error
         + "); velmoctl detach takes out what was put in";
}

// What is wrong with a queue that has its new PPD file; empty if nothing is.
std::string problem_of(Queue const& before, PpdEdit const& edit, Settled const& settled)
{
  if (!settled.queue) return settled.problem;
  // Taking the block out may bring back a filter that was missing before.
  if (!edit.attaches) return {};
  if (!settled.queue->isAttached()) return "the scheduler does not offer the filter's commands";
  return new_filter_problem(before, *settled.queue);
}

// Uploads and looks what became of it: an upload that failed may have been carried out all the
// same. Nothing if somebody else came in between. The signals are held: nobody is left with a
// queue that was changed and not looked at, or with a pause that the scheduler forgot.
std::optional<ChangeResult> replace_ppd(Scheduler const& scheduler, Queue const& before,
                                        PpdEdit const& edit, std::string const& old,
                                        std::string const& wanted)
{
  SignalHold const hold(OpenRequests::GoOn);
  std::string const error = put_ppd(scheduler, before.name, wanted);
  Settled const settled = settle(scheduler, before);
  PpdAnswer const now = get_ppd(scheduler, before.name);
  if (!error.empty() && !now.ppd)
    return not_done(error + "; whether the PPD file was changed is not known (" + now.error
                    + "), velmoctl list tells");
  if (!error.empty() && *now.ppd == old)
    return not_done(error + "; the PPD file is as it was" + but_lost(before, settled));
  if (now.ppd && *now.ppd != wanted) return std::nullopt;
  std::string const problem = now.ppd ? problem_of(before, edit, settled)
                                      : "the new PPD file cannot be read back: " + now.error;
  if (!problem.empty()) return not_done(problem + "; " + given_back(scheduler, before, old));
  if (!settled.problem.empty()) return not_done("the PPD file was changed, but " + settled.problem);
  return ChangeResult{Outcome::Changed, {}, {}, lost_reasons(before, *settled.queue)};
}

// A file that is as wanted names a filter that the scheduler may still not be able to start.
ChangeResult as_it_is(Scheduler const& scheduler, std::string const& name, PpdEdit const& edit)
{
  QueueAnswer const queue = get_queue(scheduler, name);
  if (!queue.queue) return not_done(queue.error);
  std::string const fault = edit.attaches ? filter_fault(*queue.queue) : std::string();
  if (fault.empty()) return {Outcome::NothingToDo, {}, {}, {}};
  return not_done("the PPD file is as wanted, but " + fault
                  + "; install the package or mend the filter's owner and rights");
}

// One attempt, from reading the PPD file to looking at what became of it; nothing if somebody
// else changed the file meanwhile.
std::optional<ChangeResult> try_to_change(Scheduler const& scheduler, std::string const& name,
                                          PpdEdit const& edit, ChangeRules const& rules)
{
  PpdAnswer const now = get_ppd(scheduler, name);
  if (!now.ppd) return not_done(now.error);
  PpdChange const change = edit.change(*now.ppd);
  if (!change.refusal.empty()) return not_done(change.refusal, change.rivals);
  if (change.ppd == *now.ppd) return as_it_is(scheduler, name, edit);
  if (std::string fault = ppd_fault(change.ppd); !fault.empty()) return not_done(std::move(fault));
  if (rules.dry_run)
    return ChangeResult{Outcome::DryRun, ppd_diff(name, *now.ppd, change.ppd), {}, {}};

  QueueAnswer const queue = get_queue(scheduler, name);
  if (!queue.queue) return not_done(queue.error);
  if (queue.queue->state == IPP_PSTATE_PROCESSING && !rules.while_printing)
    return not_done(
        "it is printing, and the scheduler would start the job that is printing "
        "anew; wait, or say --while-printing");
  if (get_ppd(scheduler, name).ppd != now.ppd) return std::nullopt;
  return replace_ppd(scheduler, *queue.queue, edit, *now.ppd, change.ppd);
}

// What became of a file that others changed again and again.
std::string last_seen(Scheduler const& scheduler, std::string const& name, PpdEdit const& edit)
{
  PpdAnswer const now = get_ppd(scheduler, name);
  if (!now.ppd) return "how it is now cannot be read (" + now.error + ")";
  bool const is_as_wanted = edit.change(*now.ppd).ppd == *now.ppd;
  return is_as_wanted ? "now it is as wanted" : "now it is not as wanted";
}

}  // namespace

ChangeResult change_ppd(Scheduler const& scheduler, Queue const& queue, PpdEdit const& edit,
                        ChangeRules const& rules)
{
  for (int i = 0; i < MOST_ATTEMPTS; ++i)
    if (std::optional<ChangeResult> result = try_to_change(scheduler, queue.name, edit, rules))
      return *std::move(result);
  return not_done("others change its PPD file all the time, "
                  + last_seen(scheduler, queue.name, edit) + "; try again when they have done");
}
