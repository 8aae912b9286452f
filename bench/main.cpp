// Measures the filter against its opponents.
// Usage: velmo-bench FOLDER [ROUNDS], or velmo-bench --version
// Prints the tables, and leaves them in the folder with the points of the plot.
#include <sys/resource.h>

#include <cstdio>
#include <fstream>
#include <stdexcept>
#include <string_view>

#include "bench/bars.h"
#include "bench/counts.h"
#include "bench/growth.h"
#include "bench/opponents.h"
#include "bench/rounds.h"

namespace {

// Hundreds of printers at once take five descriptors each.
void raise_descriptor_limit()
{
  rlimit limit{};
  getrlimit(RLIMIT_NOFILE, &limit);
  limit.rlim_cur = limit.rlim_max;
  setrlimit(RLIMIT_NOFILE, &limit);
}

class Report {
public:
  explicit Report(std::string const& path) : file_(path) {}

  void add(std::string const& title, std::string const& text)
  {
    std::string const section = "### " + title + "\n\n" + text + "\n";
    file_ << section;
    std::fputs(section.c_str(), stdout);
    std::fflush(stdout);
  }

private:
  std::ofstream file_;
};

void measure(std::string const& folder, unsigned rounds)
{
  Bars bars;
  Report report(folder + "/figures.md");
  check_floor();
  report.add("A job with one `ReportLevels`", measure_one_job(rounds, bars));
  report.add("Each further `ReportStatus`: CPU", measure_further_query(rounds, bars));
  report.add("Each further `ReportStatus`: what can be counted", count_further_query(bars));
  report.add("Memory of a job", count_memory(bars));
  report.add("CPU of a job in ms, by number of `ReportStatus` directives",
             measure_directives(1 + rounds / 25, folder + "/directives.dat", bars));
  report.add("Filters at once, one `ReportLevels` each",
             measure_printers(1 + rounds / 25, folder + "/printers.dat", bars));
  Report(folder + "/bars.md").add("The bars", bars.text());
}

}  // namespace

int main(int argc, char* argv[])
{
  std::string_view const folder = argc > 1 ? argv[1] : "";
  if (folder == "--version") {
    std::puts("velmo-bench " VELMO_VERSION);
    return 0;
  }
  if (folder.empty() || folder.starts_with('-')) {
    std::fputs("Usage: velmo-bench FOLDER [ROUNDS], or velmo-bench --version\n", stderr);
    return 2;
  }
  raise_descriptor_limit();
  try {
    measure(argv[1], argc > 2 ? static_cast<unsigned>(std::stoul(argv[2])) : 50);
  } catch (std::exception const& problem) {
    std::fprintf(stderr, "velmo-bench: %s\n", problem.what());
    return 1;
  }
  return 0;
}
