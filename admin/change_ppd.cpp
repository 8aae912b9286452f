// The one way in which velmoctl changes a queue: read its PPD file, change it, give it back,
// look whether the scheduler makes of it what was meant.
#include "admin/change_ppd.h"

#include "admin/ppd_check.h"
#include "admin/ppd_diff.h"
#include "admin/ppd_transfer.h"
#include "admin/queue_state.h"
#include "admin/signal_hold.h"

namespace {

using Outcome = ChangeResult::Outcome;

constexpr int MOST_ATTEMPTS = 3;

ChangeResult not_done(std::string why, std::vector<std::string> lines = {})
{
  return {Outcome::NotDone, std::move(why), std::move(lines), {}};
}

// What the scheduler made of an upload.
struct Verification {
  bool is_ours;         // the queue has the file that was uploaded
  std::string problem;  // empty if all is as meant
};

Verification verify(Scheduler const& scheduler, Queue const& before, PpdEdit const& edit,
                    std::string const& wanted)
{
  PpdAnswer const now = get_ppd(scheduler, before.name);
  if (!now.ppd) return {true, "the new PPD file cannot be read back: " + now.error};
  if (*now.ppd != wanted) return {false, "somebody else changed the PPD file at the same time"};
  QueueAnswer const queue = get_queue(scheduler, before.name);
  if (!queue.queue) return {true, "the queue cannot be looked at: " + queue.error};
  // Taking the block out may bring back a filter that was missing before.
  if (!edit.attaches) return {true, {}};
  if (!queue.queue->isAttached())
    return {true, "the scheduler does not offer the filter's commands"};
  return {true, new_filter_problem(before, *queue.queue)};
}

// Gives the old file back, and says what came of it.
std::string given_back(Scheduler const& scheduler, Queue const& before, std::string const& old)
{
  std::string error = put_ppd(scheduler, before.name, old);
  if (error.empty()) error = restore_state(scheduler, before);
  if (error.empty() && get_ppd(scheduler, before.name).ppd != old)
    error = "it does not read the same";
  if (error.empty()) return "the old PPD file was given back";
  return "the new PPD file is still there, for the old one could not be given back (" + error
         + "); velmoctl detach takes out what was put in";
}

// An upload that failed may have been carried out all the same.
std::string failed_upload(Scheduler const& scheduler, Queue const& before, std::string const& old,
                          std::string const& error)
{
  PpdAnswer const now = get_ppd(scheduler, before.name);
  if (now.ppd == old) return error + "; nothing was changed";
  return error + "; whether the PPD file was changed is not known, velmoctl list tells";
}

// Uploads and verifies; nothing if somebody else came in between. The signals are held: nobody
// is left with a queue that was changed and not looked at, or with a pause that the scheduler
// forgot.
std::optional<ChangeResult> replace_ppd(Scheduler const& scheduler, Queue const& before,
                                        PpdEdit const& edit, std::string const& old,
                                        std::string const& wanted)
{
  SignalHold const hold;
  if (std::string const error = put_ppd(scheduler, before.name, wanted); !error.empty())
    return not_done(failed_upload(scheduler, before, old, error));
  std::string const not_restored = restore_state(scheduler, before);
  Verification const seen = verify(scheduler, before, edit, wanted);
  if (!seen.is_ours) return std::nullopt;
  if (!seen.problem.empty())
    return not_done(seen.problem + "; " + given_back(scheduler, before, old));
  if (!not_restored.empty()) return not_done("the PPD file was changed, but " + not_restored);
  return ChangeResult{Outcome::Changed, {}, {}, lost_reasons(before)};
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
  if (change.ppd == *now.ppd) return ChangeResult{Outcome::NothingToDo, {}, {}, {}};
  if (int const line = unreadable_ppd_line(change.ppd))
    return not_done("CUPS cannot read the PPD file beyond line " + std::to_string(line)
                    + "; cupstestppd says what is wrong there");
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

}  // namespace

ChangeResult change_ppd(Scheduler const& scheduler, Queue const& queue, PpdEdit const& edit,
                        ChangeRules const& rules)
{
  for (int i = 0; i < MOST_ATTEMPTS; ++i)
    if (std::optional<ChangeResult> result = try_to_change(scheduler, queue.name, edit, rules))
      return *std::move(result);
  return not_done("others change its PPD file all the time; try again when they have done");
}
