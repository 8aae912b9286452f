// Opponents side by side: everyone once a round, each round in another order.
#include "bench/rounds.h"

#include <algorithm>
#include <array>

#include "bench/opponents.h"
#include "bench/statistics.h"
#include "tests/harness/command_file_text.h"
#include "tests/harness/temporary_file.h"

namespace {

constexpr int FURTHER_QUERIES = 500;

// The middle and where the middle half of the values lies.
std::string spread(std::vector<double> const& values, int decimals)
{
  return number(median(values), decimals) + " (" + number(quantile(values, 0.25), decimals) + " to "
         + number(quantile(values, 0.75), decimals) + ")";
}

std::vector<double> beyond(std::vector<double> values, double pause)
{
  for (double& value : values) value -= pause;
  return values;
}

std::vector<double> per_query(std::vector<double> many, std::vector<double> const& one)
{
  for (size_t i = 0; i < many.size(); ++i) many[i] = (many[i] - one[i]) / FURTHER_QUERIES;
  return many;
}

}  // namespace

std::vector<std::vector<Outcome>> play_rounds(std::vector<Job> const& jobs, unsigned rounds)
{
  std::vector<std::vector<Outcome>> results(jobs.size());
  std::vector<size_t> order;
  for (size_t i = 0; i < jobs.size(); ++i) order.push_back(i);
  for (unsigned round = 0; round < rounds; ++round) {
    std::vector<Job> turn;
    for (size_t const index : order) turn.push_back(jobs[index]);
    std::vector<Outcome> outcomes = play(turn);
    for (size_t i = 0; i < order.size(); ++i) {
      outcomes[i].messages.clear();
      results[order[i]].push_back(outcomes[i]);
    }
    std::rotate(order.begin(), order.begin() + 1, order.end());
  }
  return results;
}

std::vector<double> column(std::vector<Outcome> const& outcomes, double Outcome::*figure)
{
  std::vector<double> values;
  for (Outcome const& outcome : outcomes) values.push_back(outcome.*figure);
  return values;
}

std::string measure_one_job(unsigned rounds, Bars& bars)
{
  constexpr std::array OPPONENTS{FILTER, FLOOR, IN_PIECES, EMPTY, TO_PS, TO_ESCPX, TO_PCLX};
  TemporaryFile const file(command_file_text("ReportLevels", 1));
  std::vector<Job> jobs;
  for (Opponent const& opponent : OPPONENTS) jobs.push_back({{opponent.path}, file.path()});
  auto const results = play_rounds(jobs, rounds);

  auto const floor_cpu = column(results[1], &Outcome::cpu);
  auto const floor_wall = beyond(column(results[1], &Outcome::wall), FLOOR.pause);
  Table table({"opponent", "CPU, ms", "CPU : floor", "wall beyond the pause, ms", "wall : floor",
               "last reply to last STATE, µs"});
  for (size_t i = 0; i < jobs.size(); ++i) {
    auto const cpu = column(results[i], &Outcome::cpu);
    auto const wall = beyond(column(results[i], &Outcome::wall), OPPONENTS[i].pause);
    double const report = median(column(results[i], &Outcome::report));
    table.add({OPPONENTS[i].name, number(median(cpu) / 1000, 2), spread(ratios(cpu, floor_cpu), 2),
               number(median(wall) / 1000, 2), spread(ratios(wall, floor_wall), 2),
               report > 0 ? number(report) : "-"});
  }
  auto const filter_wall = beyond(column(results[0], &Outcome::wall), FILTER.pause);
  bars.add("CPU of a one-directive job : floor", 1.05,
           median(ratios(column(results[0], &Outcome::cpu), floor_cpu)), 2);
  bars.add("wall beyond the pause : floor", 1.1, median(ratios(filter_wall, floor_wall)), 2);
  return table.text();
}

std::string measure_further_query(unsigned rounds, Bars& bars)
{
  constexpr std::array OPPONENTS{FILTER, FLOOR, IN_PIECES};
  TemporaryFile const one(command_file_text("ReportStatus", 1));
  TemporaryFile const many(command_file_text("ReportStatus", 1 + FURTHER_QUERIES));
  std::vector<Job> jobs;
  for (Opponent const& opponent : OPPONENTS) {
    jobs.push_back({{opponent.path}, one.path()});
    jobs.push_back({{opponent.path}, many.path()});
  }
  auto const results = play_rounds(jobs, rounds);

  std::vector<std::vector<double>> costs;
  for (size_t i = 0; i < OPPONENTS.size(); ++i)
    costs.push_back(per_query(column(results[2 * i + 1], &Outcome::cpu),
                              column(results[2 * i], &Outcome::cpu)));
  Table table({"opponent", "CPU for each further query, µs", ": floor"});
  for (size_t i = 0; i < OPPONENTS.size(); ++i)
    table.add({OPPONENTS[i].name, spread(costs[i], 1), spread(ratios(costs[i], costs[1]), 2)});
  bars.add("CPU of a further query : floor", 1.3, median(ratios(costs[0], costs[1])), 2);
  return table.text();
}
