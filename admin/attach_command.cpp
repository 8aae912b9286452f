// velmoctl attach and velmoctl detach.
#include "admin/attach_command.h"

#include <algorithm>
#include <cstddef>
#include <utility>
#include <vector>

#include "admin/device_advice.h"
#include "admin/output.h"
#include "admin/status_command.h"
#include "admin/text_file.h"
#include "admin/unit_name.h"

namespace {

using Outcome = ChangeResult::Outcome;

// The queue if its PPD file is one to be changed; complains if not.
std::optional<Queue> changeable_queue(Scheduler const& scheduler, std::string const& name)
{
  if (name.find('/') != std::string::npos) {
    complain(name, "is an instance of a queue; instances share the queue's PPD file, name that");
    return std::nullopt;
  }
  QueueAnswer answer = get_queue(scheduler, name);
  if (!answer.queue) return complain(name, answer.error), std::nullopt;
  if (answer.queue->is_class)
    return complain(name, "is a class; name the queues in it"), std::nullopt;
  if (answer.queue->model.find("IPP Everywhere") != std::string::npos
      || answer.queue->model.find("driverless") != std::string::npos)
    return complain(name,
                    "is a driverless queue; its PPD file is made from the printer's answers "
                    "and not changed by hand"),
           std::nullopt;
  return std::move(answer.queue);
}

// Says what came of it. Returns whether it was done.
bool report(std::string const& name, ChangeResult const& result, char const* done,
            char const* nothing)
{
  std::string const shown = printable(name);
  if (result.outcome == Outcome::NothingToDo) say(shown + ": " + nothing);
  if (result.outcome == Outcome::Changed) say(shown + ": " + done);
  if (result.outcome == Outcome::DryRun) say(result.text.substr(0, result.text.rfind('\n')));
  if (result.outcome != Outcome::NotDone) return true;
  for (std::string const& line : result.lines) complain(name, line);
  complain(name, result.text);
  return false;
}

void tell_lost_reasons(std::string const& name, ChangeResult const& result, char const* remedy)
{
  if (result.lost.empty()) return;
  std::string text = printable(name) + ": with the old PPD file the scheduler forgot";
  for (std::string const& reason : result.lost) text += " " + printable(reason);
  say(text + "; " + remedy);
}

void advise(Queue const& queue)
{
  if (std::string const why = device_without_answers(queue.device); !why.empty())
    complain(queue.name, "warning: " + why);
  if (std::string const device = device_without_snmp(queue.device); !device.empty())
    say("A printer without SNMP holds every job for 4 seconds; this avoids it:\n  lpadmin -p "
        + printable(shell_quoted(queue.name) + " -v " + shell_quoted(device)));
}

// Whoever attaches queues need not be one who starts services.
void tell_service(Queue const& queue)
{
  say("This has the printer asked after each print, from now on:\n  systemctl enable --now "
      + shell_quoted(refresh_unit(queue.name)));
}

struct ChangedQueue {
  std::string name;
  ChangeResult result;
};

// What was changed is put behind the others in `changed`. Returns whether it is attached now.
bool attach_one(Scheduler const& scheduler, std::string const& name, PpdEdit const& edit,
                AttachOptions const& options, std::vector<ChangedQueue>& changed)
{
  std::optional<Queue> const queue = changeable_queue(scheduler, name);
  if (!queue) return false;
  ChangeResult result = change_ppd(scheduler, *queue, edit, options.rules);
  if (!report(queue->name, result, "attached, the scheduler starts commandtovelmo for command jobs",
              "is attached as wanted, nothing to do"))
    return false;
  if (options.keep_fresh && result.outcome != Outcome::DryRun) tell_service(*queue);
  if (result.outcome != Outcome::Changed) return true;
  advise(*queue);
  changed.push_back({queue->name, std::move(result)});
  return true;
}

// A queue is attached whatever its printer says, or does not say.
void ask_changed(Scheduler const& scheduler, std::vector<ChangedQueue> const& changed, bool no_ask)
{
  std::vector<std::string> names;
  names.reserve(changed.size());
  for (ChangedQueue const& queue : changed) names.push_back(queue.name);
  std::vector<bool> const are_in = no_ask ? std::vector<bool>(names.size(), false)
                                          : ask_and_show(scheduler, names, AskOptions().timeout);
  for (std::size_t i = 0; i < changed.size(); ++i)
    if (!are_in[i])
      tell_lost_reasons(names[i], changed[i].result,
                        "velmoctl ask brings back those that still hold");
}

bool detach_one(Scheduler const& scheduler, std::string const& name, PpdEdit const& edit,
                ChangeRules const& rules)
{
  std::optional<Queue> const queue = changeable_queue(scheduler, name);
  if (!queue) return false;
  ChangeResult const result = change_ppd(scheduler, *queue, edit, rules);
  if (!report(queue->name, result, "detached, what attach put into its PPD file is out again",
              "is not attached by velmoctl, nothing to do"))
    return false;
  tell_lost_reasons(queue->name, result, "nothing asks the printer any more");
  return true;
}

// The texts that the options speak of; complains if they are not good.
bool read_wishes(AttachOptions const& options, AttachWishes& wishes)
{
  wishes.replace = options.replace;
  if (options.no_reason_texts) wishes.reason_texts.emplace();
  if (!options.reason_texts) return true;
  std::string const& path = *options.reason_texts;
  TextFile const file = read_text_file(path);
  if (!file.error.empty()) return complain(path, file.error), false;
  ReasonTexts texts = parse_reason_texts(file.text);
  if (texts.error_line != 0)
    return complain(path + ":" + std::to_string(texts.error_line), texts.error), false;
  wishes.reason_texts = std::move(texts.texts);
  return true;
}

}  // namespace

int run_attach(Scheduler const& scheduler, AttachOptions const& options)
{
  AttachWishes wishes;
  if (!read_wishes(options, wishes)) return 1;
  PpdEdit const edit{[&](std::string_view ppd) { return attach(ppd, wishes); }, true};
  bool all_done = true;
  std::vector<ChangedQueue> changed;
  for (std::string const& name : options.queues)
    all_done = attach_one(scheduler, name, edit, options, changed) && all_done;
  ask_changed(scheduler, changed, options.no_ask);
  return all_done ? 0 : 1;
}

int run_detach(Scheduler const& scheduler, AttachOptions const& options)
{
  PpdEdit const edit{detach, false};
  bool all_done = true;
  for (std::string const& name : options.queues)
    all_done = detach_one(scheduler, name, edit, options.rules) && all_done;
  return all_done ? 0 : 1;
}
