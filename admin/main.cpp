// velmoctl: attaches print queues to the filter and shows what their printers say.
#include <CLI/CLI.hpp>
#include <csignal>
#include <limits>
#include <span>

#include "admin/attach_command.h"
#include "admin/explain_command.h"
#include "admin/keep_fresh_command.h"
#include "admin/list_command.h"
#include "admin/output.h"
#include "admin/status_command.h"
#include "admin/version.h"

namespace {

// Of minutes or seconds: more than a year, and no clock's end.
constexpr double LONGEST = 1e6;

struct Arguments {
  std::vector<std::string> servers;  // none: what CUPS_SERVER and client.conf say
  AttachOptions attach;
  AttachOptions detach;
  bool list_as_json = false;
  StatusOptions status;
  AskOptions ask;
  ExplainOptions explain;
  KeepFreshOptions keep_fresh;
};

void add_queues(CLI::App& command, std::vector<std::string>& queues)
{
  command.add_option("QUEUE", queues, "Names of queues; -- in front of one with a leading dash")
      ->required();
}

void add_change_rules(CLI::App& command, ChangeRules& rules)
{
  command.add_flag("--dry-run", rules.dry_run,
                   "Show how the PPD file would change, change nothing");
  command.add_flag("--while-printing", rules.while_printing,
                   "Also if the queue is printing: the job is printed anew");
}

void add_attach(CLI::App& app, AttachOptions& options)
{
  CLI::App* const command =
      app.add_subcommand("attach", "Have the scheduler start the filter for a queue");
  add_change_rules(*command, options.rules);
  command->add_flag("--replace", options.replace,
                    "Replace a command filter, commands or texts that the PPD file has");
  auto* const texts =
      command->add_option("--reason-texts", options.reason_texts,
                          "Texts for the printer's errors in place of earlier ones, "
                          "lines of KEYWORD TEXT; - is standard input");
  texts->type_name("FILE");
  command->add_flag("--no-reason-texts", options.no_reason_texts, "Take out texts given earlier")
      ->excludes(texts);
  command->add_flag("--no-ask", options.no_ask, "Do not ask the printer afterwards");
  command->add_flag("--keep-fresh", options.keep_fresh,
                    "Show the command that has the printer asked after each print");
  add_queues(*command, options.queues);
}

void add_detach(CLI::App& app, AttachOptions& options)
{
  CLI::App* const command =
      app.add_subcommand("detach", "Give a queue its PPD file of before attach back");
  add_change_rules(*command, options.rules);
  add_queues(*command, options.queues);
}

void add_list(CLI::App& app, bool& as_json)
{
  CLI::App* const command =
      app.add_subcommand("list", "Show which queues are attached, and which of them are broken");
  command->add_flag("--json", as_json, "As JSON");
}

// CLI11 reads 060 as 48, as C does.
std::string fault_of_number(std::string const& text)
{
  bool const is_decimal = text.find_first_not_of("0123456789") == std::string::npos
                          && (text.size() == 1 || !text.starts_with('0'));
  return is_decimal ? std::string() : text + " is no decimal number";
}

// CLI11 takes "nan" for a number, and one in any range.
std::string fault_of_decimals(std::string const& text)
{
  bool const is_decimal = text.find_first_not_of("0123456789.") == std::string::npos;
  return is_decimal ? std::string() : text + " is no decimal number";
}

CLI::Validator time_up_to(double most)
{
  return CLI::Validator(fault_of_decimals, {}) & CLI::Range(0.0, most);
}

CLI::Validator number_up_to(int most)
{
  return CLI::Validator(fault_of_number, {}) & CLI::Range(0, most);
}

void add_status(CLI::App& app, StatusOptions& options)
{
  CLI::App* const command =
      app.add_subcommand("status", "Show ribbon and errors as the scheduler knows them");
  auto* const json = command->add_flag("--json", options.json, "As JSON");
  auto* const check =
      command->add_flag("--check", options.check,
                        "As a monitoring plugin: one line a queue, exit status 0 OK, 1 warning, 2 "
                        "critical, 3 unknown");
  json->excludes(check);
  command->add_flag("--watch", options.watch, "Draw it again every 2 seconds")
      ->excludes(json)
      ->excludes(check);
  command->add_option("--warning", options.limits.warning, "A level below is low")
      ->type_name("PERCENT")
      ->check(number_up_to(100))
      ->capture_default_str();
  command
      ->add_option("--critical", options.limits.critical, "With --check: a level below is critical")
      ->type_name("PERCENT")
      ->check(number_up_to(100))
      ->capture_default_str();
  command
      ->add_option("--max-age", options.limits.max_age, "With --check: an older level is a warning")
      ->type_name("SECONDS")
      ->check(number_up_to(std::numeric_limits<int>::max()));
  command->add_option("QUEUE", options.queues, "Names of queues; without one, all attached ones");
}

void add_ask(CLI::App& app, AskOptions& options)
{
  CLI::App* const command = app.add_subcommand("ask", "Ask the printer now, and show what it says");
  command->add_option("--timeout", options.timeout, "Wait so long")
      ->type_name("SECONDS")
      ->capture_default_str()
      ->check(CLI::Range(1, 3600));
  add_queues(*command, options.queues);
}

void add_keep_fresh(CLI::App& app, KeepFreshOptions& options)
{
  CLI::App* const command =
      app.add_subcommand("keep-fresh", "Stay running, and have printers asked after each print");
  command->add_option("--idle", options.idle_minutes, "Also so long after the last ask; 0 is never")
      ->type_name("MINUTES")
      ->capture_default_str()
      ->check(time_up_to(LONGEST));
  command
      ->add_option("--settle", options.settle_seconds,
                   "Only when the queue has been quiet for so long; 3, over USB 15")
      ->type_name("SECONDS")
      ->check(time_up_to(LONGEST));
  command
      ->add_option("--delay", options.delay_seconds,
                   "Only so long after a print, for printers that count late")
      ->type_name("SECONDS")
      ->capture_default_str()
      ->check(time_up_to(LONGEST));
  add_queues(*command, options.queues);
}

// What is wrong with the command line, and where to read on.
std::string command_line_error(CLI::App const& app, CLI::ParseError const& error)
{
  std::vector<CLI::App*> const commands = app.get_subcommands();
  if (!commands.empty())
    return std::string(error.what()) + "; see velmoctl " + commands.front()->get_name() + " --help";
  std::vector<std::string> const words = app.remaining();
  return (words.empty() ? error.what() : printable(words.front()) + " is no command")
         + "; see velmoctl --help";
}

void add_explain(CLI::App& app, ExplainOptions& options)
{
  CLI::App* const command = app.add_subcommand(
      "explain", "Tell in words what the scheduler's log holds of the filter's jobs");
  command->add_option("--job", options.job, "This job only")
      ->type_name("NUMBER")
      ->check(CLI::Range(1, std::numeric_limits<int>::max()));
  command
      ->add_option("FILE", options.file,
                   "The log, also compressed; - is standard input; default: " + options.file)
      ->type_name("");
}

int with_scheduler(Arguments const& arguments, CLI::App const& command)
{
  std::string const server = arguments.servers.empty() ? std::string() : arguments.servers.front();
  // It waits for a scheduler that is not there yet.
  if (command.get_name() == "keep-fresh") return run_keep_fresh(server, arguments.keep_fresh);
  Scheduler const scheduler = connect(server);
  if (!scheduler.http && arguments.status.check) {
    say("VELMO UNKNOWN - scheduler not reachable");
    return CHECK_UNKNOWN;
  }
  if (!scheduler.http) {
    if (arguments.status.json) say(unreachable_json(arguments.status.queues));
    complain({}, "the scheduler at " + scheduler.server
                     + " cannot be reached; start it, or name another with -h");
    return 1;
  }
  if (command.get_name() == "attach") return run_attach(scheduler, arguments.attach);
  if (command.get_name() == "detach") return run_detach(scheduler, arguments.detach);
  if (command.get_name() == "status") return run_status(scheduler, arguments.status);
  if (command.get_name() == "ask") return run_ask(scheduler, arguments.ask);
  return run_list(scheduler, arguments.list_as_json);
}

int with_servers(Arguments const& arguments, CLI::App const& command)
{
  if (command.get_name() == "status") return run_status(arguments.servers, arguments.status);
  complain({}, command.get_name() + " takes one -h; status takes several");
  return 2;
}

int run(Arguments const& arguments, CLI::App const& command)
{
  if (command.get_name() != "explain")
    return arguments.servers.size() > 1 ? with_servers(arguments, command)
                                        : with_scheduler(arguments, command);
  if (arguments.servers.empty()) return run_explain(arguments.explain);
  complain({},
           "explain reads a file, not what the scheduler of -h logs; see velmoctl explain --help");
  return 2;
}

// CLI11 takes "[photo]" for a list of one, and "++" for the end of a command. A mark at its end,
// which is in no queue's name, keeps it whole.
constexpr char WHOLE = '\n';

bool is_read_otherwise(std::string_view argument)
{
  return argument.starts_with('[') || argument.starts_with("++");
}

std::vector<std::string> marked_arguments(std::span<char*> arguments)
{
  // The parser takes them from the last to the first.
  std::vector<std::string> marked(arguments.rbegin(), arguments.rend());
  for (std::string& argument : marked)
    if (is_read_otherwise(argument)) argument += WHOLE;
  return marked;
}

void unmark(std::string& argument)
{
  if (is_read_otherwise(argument) && argument.ends_with(WHOLE)) argument.pop_back();
}

void unmark(Arguments& arguments)
{
  for (auto* const queues :
       {&arguments.attach.queues, &arguments.detach.queues, &arguments.status.queues,
        &arguments.ask.queues, &arguments.keep_fresh.queues, &arguments.servers})
    for (std::string& queue : *queues) unmark(queue);
  unmark(arguments.explain.file);
  if (arguments.attach.reason_texts) unmark(*arguments.attach.reason_texts);
}

// The exit status, once what was said has been written.
int ended(Arguments const& arguments, int status)
{
  if (is_output_written()) return status;
  if (arguments.status.check) return CHECK_UNKNOWN;
  if (status == 0) complain({}, "apart from that, what was asked for is done");
  return 1;
}

}  // namespace

int main(int argc, char** argv)
{
  // A reader that goes away is noticed when the output is written.
  std::signal(SIGPIPE, SIG_IGN);
  fill_standard_descriptors();
  Arguments arguments;
  CLI::App app("Attaches print queues to commandtovelmo, the command filter for Velmo printers.",
               "velmoctl");
  app.set_help_flag("--help", "Show this text");
  app.set_version_flag("--version", "velmoctl " VELMO_VERSION, "Show the version");
  app.add_option("-h", arguments.servers,
                 "The scheduler; else that of CUPS_SERVER or client.conf; several for status")
      ->type_name("HOST[:PORT]")
      ->allow_extra_args(false);
  app.footer(
      "First steps: velmoctl list, velmoctl attach --dry-run QUEUE, velmoctl attach QUEUE.\n"
      "velmoctl SUBCOMMAND --help tells its options, man velmoctl tells all.");
  app.require_subcommand(1);
  app.fallthrough();
  add_attach(app, arguments.attach);
  add_detach(app, arguments.detach);
  add_list(app, arguments.list_as_json);
  add_status(app, arguments.status);
  add_ask(app, arguments.ask);
  add_explain(app, arguments.explain);
  add_keep_fresh(app, arguments.keep_fresh);

  try {
    app.parse(marked_arguments(std::span(argv, static_cast<std::size_t>(argc)).subspan(1)));
  } catch (CLI::Success const& answer) {
    app.exit(answer);
    return is_output_written() ? 0 : 1;
  } catch (CLI::ParseError const& error) {
    std::string const what = command_line_error(app, error);
    complain({}, what);
    if (!arguments.status.check) return 2;
    // A monitor takes 2 for a printer's trouble, and shows what stands on standard output.
    say("VELMO UNKNOWN - " + printable(what));
    return CHECK_UNKNOWN;
  }
  unmark(arguments);
  int const status = ended(arguments, run(arguments, *app.get_subcommands().front()));
  // A thread that hangs at one of several servers is not waited for, and nothing is taken from it.
  if (arguments.servers.size() > 1) std::_Exit(status);
  return status;
}
