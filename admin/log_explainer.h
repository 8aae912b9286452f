// A whole log in words, job by job, in memory that does not grow with it.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "admin/job_story.h"
#include "admin/log_line.h"

class LogExplainer {
public:
  // With a number, tells of that job only.
  explicit LogExplainer(std::optional<int> only) : only_job(only) {}

  // Takes the next piece of the log. Returns what can be told now: a job is held until the log
  // ends or MOST_JOBS others have had lines since, because its last lines come after those that
  // say how it ended.
  std::string add(std::string_view piece);
  // The rest, in the order in which the jobs began.
  std::string finish();

  // Some job of the filter was told.
  [[nodiscard]] bool hasTold() const { return has_told; }

private:
  static constexpr std::size_t MOST_JOBS = 64;

  struct Held {
    JobStory story;
    unsigned long last_line;  // its number
  };
  using Jobs = std::vector<Held>;

  void addLine(std::string_view line, std::string& told);
  Jobs::iterator find(LogLine const& line, std::string& told);
  void tell(Held& held, std::string& told);

  std::optional<int> only_job;
  LogLines lines;
  unsigned long line_number = 0;
  Jobs jobs;  // in the order in which they began
  bool has_told = false;
};
