// The settings of a scheduler that can stop a server with many queues.
#include "admin/server_settings.h"

#include <cups/cups.h>
#include <strings.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <memory>
#include <string_view>

#include "admin/memory_file.h"

namespace {

struct CloseFile {
  void operator()(cups_file_t* file) const { cupsFileClose(file); }
};

constexpr unsigned long ANY_NUMBER = 0;
// What the scheduler counts at least for each job that runs (CUPS 2.4, scheduler/job.c).
constexpr unsigned long COST_OF_A_JOB = 100;

// What is no plain number of the scheduler's (it takes "1k", too) warns of nothing.
unsigned long number(char const* value)
{
  std::string_view const text(value ? value : "");
  unsigned long result = ANY_NUMBER;
  auto const [end, error] = std::from_chars(text.data(), text.data() + text.size(), result);
  return error == std::errc() && end == text.data() + text.size() ? result : ANY_NUMBER;
}

void take(ServerSettings& settings, char const* name, char const* value)
{
  if (strcasecmp(name, "MaxJobs") == 0) settings.max_jobs = number(value);
  if (strcasecmp(name, "FilterLimit") == 0) settings.filter_limit = number(value);
}

}  // namespace

std::optional<ServerSettings> read_settings(std::string const& conf)
{
  ServerSettings settings;
  MemoryFile const bytes(conf);
  // The reader closes the descriptor that it is given.
  int const descriptor = dup(bytes.descriptor());
  lseek(descriptor, 0, SEEK_SET);
  std::unique_ptr<cups_file_t, CloseFile> const file(cupsFileOpenFd(descriptor, "r"));
  if (!file) return std::nullopt;
  char line[HTTP_MAX_BUFFER];
  char* value = nullptr;
  int line_number = 0;
  while (cupsFileGetConf(file.get(), line, sizeof line, &value, &line_number))
    take(settings, line, value);
  return settings;
}

std::vector<std::string> settings_advice(ServerSettings const& settings, std::size_t queues)
{
  std::vector<std::string> advice;
  std::string const fleet = std::to_string(queues) + " attached queues";
  if (settings.max_jobs != ANY_NUMBER && settings.max_jobs < queues)
    advice.push_back("MaxJobs " + std::to_string(settings.max_jobs) + " is too little for "
                     + fleet
                     + ": when so many jobs wait for printers that are off, the scheduler takes "
                       "none for any queue; set MaxJobs "
                     + std::to_string(2 * queues) + " in cupsd.conf");
  if (settings.filter_limit != ANY_NUMBER && settings.filter_limit < COST_OF_A_JOB * queues)
    advice.push_back("FilterLimit " + std::to_string(settings.filter_limit)
                     + " is too little for " + fleet + ": it limits the jobs that run at once to "
                     + std::to_string(std::max(1UL, settings.filter_limit / COST_OF_A_JOB))
                     + ", and when so many printers are off, all others wait; set FilterLimit 0 in "
                       "cupsd.conf");
  return advice;
}
