// How a trace is had and read.
#include "tests/shipped/traced_run.h"

#include <algorithm>
#include <fstream>

#include "tests/harness/answered_run.h"
#include "tests/harness/temporary_file.h"
#include "tests/oracle/status_reply.h"

namespace {

// "1234  name(arguments) = result"; strace's own remarks hold no call and are left out.
std::vector<SystemCall> read_trace(std::string const& path)
{
  std::vector<SystemCall> calls;
  std::ifstream trace(path);
  for (std::string line; std::getline(trace, line);) {
    auto const name = line.find_first_not_of(" 0123456789");
    auto const opening = line.find('(');
    auto const closing = line.rfind(") ");
    if (opening == std::string::npos || closing == std::string::npos) continue;
    calls.push_back(
        {line.substr(name, opening - name), line.substr(opening + 1, closing - opening - 1)});
  }
  auto const main_starts = std::find_if(calls.begin(), calls.end(), [](SystemCall const& call) {
    return call.name == "rt_sigaction" && call.arguments.starts_with("SIGPIPE, ");
  });
  calls.erase(calls.begin(), main_starts);
  return calls;
}

}  // namespace

TracedRun trace_filter(std::vector<std::string> environment)
{
  TemporaryFile const commands("ReportLevels\nReportStatus\n");
  TemporaryFile const trace("");
  AnsweredRun const run =
      run_answered({.words = {STRACE_PATH, "-f", "-s", "4096", "-o", trace.path(), FILTER_PATH, "1",
                              "user", "title", "1", "", commands.path()},
                    .environment = std::move(environment),
                    .answers = answers_for_queries(2),
                    .replies = std::vector(2, StatusReply{}.bytes())});
  return {run.exit_status, run.messages, commands.path(), read_trace(trace.path())};
}
