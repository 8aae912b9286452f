// The lines of the scheduler's log: how bytes become lines, and what a line of a job holds.
#pragma once

#include <optional>
#include <string>
#include <string_view>

struct LogLine {
  char level;             // as the scheduler writes it: E, W, I, D, ...
  std::string_view time;  // without its brackets
  int job;
  std::string_view text;  // what the scheduler or a program of the job says
};

// Reads "D [22/Nov/2026:01:33:47 +0000] [Job 12] TEXT". Nothing for a line of no job, and for
// one that is torn.
std::optional<LogLine> parse_log_line(std::string_view line);

// Whether a text is like the pattern, in which "..." stands for anything, nothing included.
bool is_like(std::string_view text, std::string_view pattern);

// Puts lines together from the pieces in which a log is read. A zero byte ends a line too: a
// system that went down in the middle of a line leaves a hole of them behind it.
class LogLines {
public:
  // Nothing of interest is longer: the scheduler hands on 2047 bytes of a program's line.
  static constexpr std::size_t LONGEST = 4096;

  // Gives each line that is complete now to `take`, without its end. A longer one is left out.
  template <typename Take>
  void add(std::string_view piece, Take const& take)
  {
    for (std::size_t end = 0; (end = piece.find_first_of(ENDS)) != std::string_view::npos;) {
      endLine(piece.substr(0, end), take);
      piece.remove_prefix(end + 1);
    }
    keep(piece);
  }

  // The last line, if the log does not end with a line end.
  template <typename Take>
  void finish(Take const& take)
  {
    endLine({}, take);
  }

private:
  static constexpr std::string_view ENDS{"\n\0", 2};

  template <typename Take>
  void endLine(std::string_view rest, Take const& take)
  {
    if (begun.empty()) {
      if (rest.size() <= LONGEST) take(rest);
      return;
    }
    keep(rest);
    if (begun.size() <= LONGEST) take(std::string_view(begun));
    begun.clear();
  }

  // A line that is too long already need not grow.
  void keep(std::string_view bytes)
  {
    if (begun.size() <= LONGEST) begun += bytes;
  }

  std::string begun;
};
