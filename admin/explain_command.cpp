// velmoctl explain.
#include "admin/explain_command.h"

#include <cups/file.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

#include "admin/log_explainer.h"
#include "admin/output.h"

namespace {

// Writes what was told; false if nobody takes it, which is complained of at the end.
bool write(std::string_view told)
{
  if (told.empty()) return true;
  say(told.substr(0, told.size() - 1));
  return std::fflush(stdout) == 0 && std::ferror(stdout) == 0;
}

// Reads to the end. Returns what went wrong; empty if nothing did.
std::string explain(cups_file_t* file, LogExplainer& explainer, bool& is_written)
{
  char piece[4096];
  for (;;) {
    errno = 0;
    ssize_t const size = cupsFileRead(file, piece, sizeof piece);
    if (size <= 0) break;
    is_written = write(explainer.add({piece, static_cast<std::size_t>(size)}));
    if (!is_written) return {};
  }
  std::string error = errno == 0 ? "" : std::strerror(errno);
  is_written = write(explainer.finish());
  return error;
}

int complain_about(std::string const& file, std::string const& what)
{
  complain(file, what);
  return 1;
}

std::string not_opened(int error)
{
  return std::string("cannot be read: ") + std::strerror(error)
         + (error == EACCES ? "; read it as root"
                            : "; name the file that ErrorLog in cups-files.conf names");
}

}  // namespace

int run_explain(ExplainOptions const& options)
{
  // The library's reader, because it takes a log that was compressed when it was put away.
  bool const is_input = options.file == "-";
  std::string const name = is_input ? "standard input" : options.file;
  errno = 0;
  cups_file_t* const file =
      is_input ? cupsFileOpenFd(STDIN_FILENO, "r") : cupsFileOpen(options.file.c_str(), "r");
  if (!file) return complain_about(name, not_opened(errno));
  LogExplainer explainer(options.job);
  bool is_written = true;
  std::string const error = explain(file, explainer, is_written);
  cupsFileClose(file);
  if (!is_written) return 1;
  if (!error.empty()) return complain_about(name, "cannot be read to its end: " + error);
  if (explainer.hasTold()) return 0;
  std::string const what =
      options.job ? "job " + std::to_string(*options.job) + " of commandtovelmo is not in it"
                  : "no job of commandtovelmo is in it";
  return complain_about(name, what + "; cupsctl --debug-logging makes the scheduler log them");
}
