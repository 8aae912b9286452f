// Which of a PPD file's filters the scheduler starts for command jobs, and what it offers.
#include "admin/command_filter.h"

#include <algorithm>
#include <cstdio>
#include <iterator>
#include <sstream>

namespace {

constexpr std::string_view COMMAND_SUPER = "application";
constexpr std::string_view COMMAND_TYPE = "vnd.cups-command";

struct Filter {
  std::string super;  // the type of the jobs it takes, "application"
  std::string type;   // "vnd.cups-command"
  int cost;
  std::string program;
};

// Takes the value of a filter line apart with the scheduler's own formats, so that whatever
// the scheduler makes of a value is made of it here.
std::optional<Filter> parse_filter(std::string const& value)
{
  char super[16];
  char type[256];
  char to_super[16];
  char to_type[256];
  int cost = 0;
  char program[1024];
  // NOLINTBEGIN(cert-err34-c): a cost that is too large is the scheduler's problem as well
  if (std::sscanf(value.c_str(), "%15[^/]/%255s%*[ \t]%15[^/]/%255s%d%*[ \t]%1023[^\n]", super,
                  type, to_super, to_type, &cost, program)
          != 6
      && std::sscanf(value.c_str(), "%15[^/]/%255s%d%*[ \t]%1023[^\n]", super, type, &cost, program)
             != 4)
    return std::nullopt;
  // NOLINTEND(cert-err34-c)
  return Filter{super, type, cost, program};
}

// What follows a limit of the job's size, "maxsize(1000) program".
std::string_view without_limit(std::string_view program)
{
  std::size_t const end = program.find(')');
  if (!program.starts_with("maxsize(") || end == std::string_view::npos) return program;
  program.remove_prefix(end + 1);
  program.remove_prefix(std::min(program.find_first_not_of(" \t"), program.size()));
  return program;
}

bool takes_commands(Filter const& filter)
{
  return (filter.super.starts_with('*') || same_keyword(filter.super, COMMAND_SUPER))
         && (filter.type.starts_with('*') || same_keyword(filter.type, COMMAND_TYPE));
}

bool has_wildcard(Filter const& filter)
{
  return filter.super.starts_with('*') || filter.type.starts_with('*');
}

// *cupsFilter counts in exactly this spelling, *cupsFilter2 in any case.
bool is_filter_line(PpdRecord const& record, FilterLines lines)
{
  if (!record.has_value) return false;
  return lines == FilterLines::CupsFilter2 ? same_keyword(record.keyword, "cupsFilter2")
                                           : record.keyword == "cupsFilter";
}

// The scheduler offers commands only if a filter names their type without a wildcard.
bool offers_commands(PpdRecord const& record)
{
  std::optional<Filter> const filter = parse_filter(record.value);
  return filter && takes_commands(*filter) && !has_wildcard(*filter);
}

std::vector<std::string> words(std::string_view value)
{
  std::istringstream stream{std::string(value)};
  return {std::istream_iterator<std::string>(stream), {}};
}

}  // namespace

FilterLines filter_lines(std::vector<PpdRecord> const& records)
{
  for (FilterLines const lines : {FilterLines::CupsFilter2, FilterLines::CupsFilter})
    if (std::ranges::any_of(records, [&](auto const& it) { return is_filter_line(it, lines); }))
      return lines;
  return FilterLines::None;
}

PpdRecord const* command_filter(std::vector<PpdRecord> const& records)
{
  FilterLines const lines = filter_lines(records);
  PpdRecord const* best = nullptr;
  int best_cost = 0;
  for (PpdRecord const& record : records) {
    if (!is_filter_line(record, lines)) continue;
    std::optional<Filter> const filter = parse_filter(record.value);
    if (!filter || !takes_commands(*filter) || (best && filter->cost >= best_cost)) continue;
    best = &record;
    best_cost = filter->cost;
  }
  return best;
}

bool names_our_filter(PpdRecord const& record)
{
  std::optional<Filter> const filter = parse_filter(record.value);
  if (!filter) return false;
  std::string_view program = without_limit(filter->program);
  if (program.starts_with('/')) program.remove_prefix(program.rfind('/') + 1);
  return program == FILTER_NAME;
}

PpdRecord const* command_list(std::vector<PpdRecord> const& records)
{
  for (PpdRecord const& record : records)
    if (record.has_value && same_keyword(record.keyword, "cupsCommands")) return &record;
  return nullptr;
}

std::string our_command_list()
{
  std::string line = "*cupsCommands:";
  for (std::string_view const command : OUR_COMMANDS)
    line.append(command == OUR_COMMANDS.front() ? " \"" : " ").append(command);
  return line + '"';
}

bool lists_our_commands(std::string_view value)
{
  return std::ranges::equal(words(value), OUR_COMMANDS);
}

std::optional<std::string> attachment_problem(std::vector<PpdRecord> const& records)
{
  PpdRecord const* const filter = command_filter(records);
  if (!filter) return "no filter takes command jobs";
  if (!names_our_filter(*filter))
    return "line " + std::to_string(filter->line) + " names another command filter, which wins";
  FilterLines const lines = filter_lines(records);
  if (std::ranges::none_of(records, [&](auto const& it) {
        return is_filter_line(it, lines) && offers_commands(it);
      }))
    return "the filter is named for a wildcard only, so no commands are offered";
  PpdRecord const* const list = command_list(records);
  if (!list) return "no line lists the commands";
  if (!lists_our_commands(list->value))
    return "line " + std::to_string(list->line) + " lists other commands";
  return std::nullopt;
}
