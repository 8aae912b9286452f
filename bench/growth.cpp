// How the cost grows: with the directives of a job, and with the printers at once.
#include "bench/growth.h"

#include <algorithm>
#include <array>
#include <fstream>

#include "bench/opponents.h"
#include "bench/rounds.h"
#include "bench/statistics.h"
#include "tests/harness/command_file_text.h"
#include "tests/harness/temporary_file.h"

namespace {

constexpr std::array OPPONENTS{FILTER, FLOOR, IN_PIECES};

// What many filters at once take together.
struct Crowd {
  double cpu;
  double wall;
};

Crowd play_crowd(Opponent const& opponent, std::string const& command_file, int printers)
{
  Job const job{{opponent.path}, command_file};
  Crowd crowd{};
  auto const start = std::chrono::steady_clock::now();
  for (Outcome const& outcome :
       play(std::vector<Job>(static_cast<size_t>(printers), job), Starts::AtOnce))
    crowd.cpu += outcome.cpu;
  crowd.wall =
      std::chrono::duration<double, std::micro>(std::chrono::steady_clock::now() - start).count();
  return crowd;
}

std::string fit_text(Line const& line, char const* of_what)
{
  return "the filter: " + number(line.at_zero / 1000, 2) + " ms + " + number(line.slope, 1)
         + " µs for each " + of_what + ", R² = " + number(line.r_squared, 4);
}

}  // namespace

std::string measure_directives(unsigned rounds, std::string const& file, Bars& bars)
{
  std::vector<double> const counts{1, 10, 50, 100, 200, 300, 400, 500};
  std::ofstream drawn(file);
  Table table({"directives", FILTER.name, FLOOR.name, IN_PIECES.name});
  std::vector<double> filter_cpu;
  for (double const count : counts) {
    TemporaryFile const commands(command_file_text("ReportStatus", static_cast<int>(count)));
    std::vector<Job> jobs;
    for (Opponent const& opponent : OPPONENTS) jobs.push_back({{opponent.path}, commands.path()});
    std::vector<std::string> cells{number(count)};
    drawn << count;
    for (auto const& outcomes : play_rounds(jobs, rounds)) {
      double const cpu = median(column(outcomes, &Outcome::cpu));
      if (cells.size() == 1) filter_cpu.push_back(cpu);
      cells.push_back(number(cpu / 1000, 2));
      drawn << " " << cpu / 1000;
    }
    drawn << "\n";
    table.add(cells);
  }
  Line const line = fit_line(counts, filter_cpu);
  bars.add("growth with directives, 1 - R²", 0.01, 1 - line.r_squared, 4);
  return table.text() + "\nStraight line through " + fit_text(line, "directive") + ".\n";
}

std::string measure_printers(unsigned rounds, std::string const& file, Bars& bars)
{
  std::vector<double> const counts{1, 10, 50, 100, 200, 300, 400, 500};
  TemporaryFile const commands(command_file_text("ReportLevels", 1));
  std::ofstream drawn(file);
  Table table({"printers at once", "CPU of all, ms", "floor", "CPU : floor", "CPU each, ms",
               "wall, ms", "floor ", "wall : floor"});
  std::vector<double> filter_cpu;
  for (double const count : counts) {
    std::vector<double> cpu[2];
    std::vector<double> wall[2];
    for (unsigned round = 0; round < rounds; ++round)
      for (size_t const who : {round % 2U, (round + 1) % 2U}) {
        Crowd const crowd = play_crowd(OPPONENTS[who], commands.path(), static_cast<int>(count));
        cpu[who].push_back(crowd.cpu);
        wall[who].push_back(crowd.wall);
      }
    filter_cpu.push_back(median(cpu[0]));
    drawn << count << " " << median(cpu[0]) / 1000 << " " << median(cpu[1]) / 1000 << "\n";
    table.add({number(count), number(median(cpu[0]) / 1000, 1), number(median(cpu[1]) / 1000, 1),
               number(median(ratios(cpu[0], cpu[1])), 2), number(median(cpu[0]) / 1000 / count, 2),
               number(median(wall[0]) / 1000), number(median(wall[1]) / 1000),
               number(median(ratios(wall[0], wall[1])), 2)});
  }
  Line const line = fit_line(counts, filter_cpu);
  bars.add("growth with printers, 1 - R²", 0.01, 1 - line.r_squared, 4);
  return table.text() + "\nStraight line through " + fit_text(line, "printer") + ".\n";
}
