// What can be counted instead of timed: instructions, system calls, writes, memory.
#include "bench/counts.h"

#include <algorithm>
#include <array>
#include <fstream>
#include <list>
#include <map>

#include "bench/opponents.h"
#include "bench/player/play.h"
#include "bench/statistics.h"
#include "tests/harness/callgrind.h"
#include "tests/harness/command_file_text.h"
#include "tests/harness/temporary_file.h"

namespace {

constexpr std::array OPPONENTS{FILTER, FLOOR, IN_PIECES};
constexpr int FURTHER = 10;

// Counts by name, of one further query once both runs are subtracted.
using Counts = std::map<std::string, double>;

Counts per_query(Counts many, Counts const& one)
{
  for (auto const& [name, count] : one) many[name] -= count;
  for (auto& [name, count] : many) count /= FURTHER;
  return many;
}

double sum(Counts const& counts)
{
  double all = 0;
  for (auto const& [name, count] : counts) all += count;
  return all;
}

Counts system_calls(std::string const& program, std::string const& command_file)
{
  TemporaryFile const trace("");
  play({.program = {"/usr/bin/strace", "-o", trace.path(), program}, .command_file = command_file});
  Counts calls;
  std::ifstream lines(trace.path());
  for (std::string line; std::getline(lines, line);)
    if (line.find('(') != std::string::npos) ++calls[line.substr(0, line.find('('))];
  return calls;
}

Counts messages(std::string const& program, std::string const& command_file)
{
  Counts counts;
  for (std::string const& text : play({{program}, command_file, Messages::Packets}).messages) {
    ++counts["writes"];
    counts["lines"] += static_cast<double>(std::count(text.begin(), text.end(), '\n'));
    // More than one line is a dump, written whole.
    if (text.ends_with('\n')) ++counts["whole"];
  }
  return counts;
}

Instructions instructions(std::string const& program, std::string const& command_file)
{
  return count_instructions(answered_job({{program}, command_file}, 1 + FURTHER));
}

// The most frequent first: "31 writev, 2 poll".
std::string listed(Counts const& counts)
{
  std::vector<std::pair<double, std::string>> sorted;
  for (auto const& [name, count] : counts)
    if (count > 0.05) sorted.emplace_back(-count, name);
  std::sort(sorted.begin(), sorted.end());
  std::string text;
  for (auto const& [count, name] : sorted)
    text += (text.empty() ? "" : ", ") + number(-count) + " " + name;
  return text;
}

double of_libraries(Counts const& instructions)
{
  double count = 0;
  for (auto const& [object, spent] : instructions)
    if (object.starts_with("lib") || object.starts_with("ld-")) count += spent;
  return count;
}

// The sizes that the kernel gives, in KiB, by name.
Counts read_sizes(std::string const& path)
{
  Counts sizes;
  std::ifstream lines(path);
  std::string name;
  for (double size = 0; lines >> name >> size; lines >> name) sizes[name] = size;
  return sizes;
}

// Medians of some jobs: where the kernel puts a program decides over a few pages.
Counts memory(std::string const& program, std::string const& command_file)
{
  constexpr size_t JOBS = 15;
  std::list<TemporaryFile> noted;
  while (noted.size() < JOBS) noted.emplace_back("");
  std::vector<Job> jobs;
  for (TemporaryFile const& file : noted)
    jobs.push_back(
        {.program = {PEAK_MEMORY_PATH, file.path(), program}, .command_file = command_file});
  play(jobs);

  std::map<std::string, std::vector<double>> all;
  for (TemporaryFile const& file : noted)
    for (auto const& [name, size] : read_sizes(file.path())) all[name].push_back(size);
  Counts medians;
  for (auto const& [name, sizes] : all) medians[name] = median(sizes);
  return medians;
}

}  // namespace

std::string count_further_query(Bars& bars)
{
  TemporaryFile const one(command_file_text("ReportStatus", 1));
  TemporaryFile const many(command_file_text("ReportStatus", 1 + FURTHER));
  Table table({"opponent", "instructions", "of the program itself", "of the libraries",
               "stderr: writes", "lines", "system calls", "which"});
  for (Opponent const& who : OPPONENTS) {
    auto const difference = [&](auto count) {
      return per_query(count(who.path, many.path()), count(who.path, one.path()));
    };
    Counts const spent = difference(instructions);
    Counts const calls = difference(system_calls);
    Counts const said = difference(messages);
    table.add({who.name, number(sum(spent)), number(sum(spent) - of_libraries(spent)),
               number(of_libraries(spent)), number(said.at("writes")), number(said.at("lines")),
               number(sum(calls)), listed(calls)});
    if (who.path != FILTER.path) continue;
    bars.add("instructions of a further query", 25'000, sum(spent), 0);
    bars.add("writes for each line or dump", 1, said.at("writes") / said.at("whole"), 2);
  }
  return table.text();
}

std::string count_memory(Bars& bars)
{
  TemporaryFile const file(command_file_text("ReportLevels", 1));
  double const floor = memory(FLOOR.path, file.path()).at("VmHWM:");
  Table table(
      {"opponent", "peak (VmHWM), KiB", ": floor", "private pages, KiB", "page tables, KiB"});
  for (Opponent const& who : {FILTER, FLOOR, IN_PIECES, EMPTY}) {
    Counts const used = memory(who.path, file.path());
    double const peak = used.at("VmHWM:");
    table.add({who.name, number(peak), number(peak / floor, 2), number(used.at("Private_Dirty:")),
               number(used.at("VmPTE:"))});
    if (who.path == FILTER.path) bars.add("peak memory : floor", 1.06, peak / floor, 2);
  }
  return table.text();
}
