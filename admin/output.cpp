// What velmoctl says to the person in front of it.
#include "admin/output.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstring>

void fill_standard_descriptors()
{
  for (int const descriptor : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
    if (fcntl(descriptor, F_GETFD) < 0)
      open("/dev/null", descriptor == STDIN_FILENO ? O_WRONLY : O_RDONLY);
}

std::string printable(std::string_view text)
{
  std::string shown(text);
  for (std::size_t i = 0; i < shown.size(); ++i) {
    auto const ch = static_cast<unsigned char>(shown[i]);
    if ((ch < ' ' && ch != '\t') || ch == 0x7f) shown[i] = '?';
    // The control characters of ISO 8859 are c2 80 to c2 9f in UTF-8.
    if (ch != 0xc2 || i + 1 == shown.size()) continue;
    auto const next = static_cast<unsigned char>(shown[i + 1]);
    if (next >= 0x80 && next < 0xa0) shown.replace(i, 2, "?");
  }
  return shown;
}

std::string shell_quoted(std::string_view word)
{
  std::string quoted = "'";
  for (char const ch : word) {
    if (ch == '\'') quoted += "'\\'";
    quoted += ch;
  }
  return quoted + "'";
}

void say(std::string_view text)
{
  std::string const line = std::string(text) + "\n";
  std::fwrite(line.data(), 1, line.size(), stdout);
}

void complain(std::string_view subject, std::string_view text)
{
  std::string line = "velmoctl: ";
  if (!subject.empty()) line += printable(subject) + ": ";
  line += printable(text) + "\n";
  std::fwrite(line.data(), 1, line.size(), stderr);
}

bool is_output_written()
{
  static bool is_complained_of = false;
  if (std::fflush(stdout) == 0 && std::ferror(stdout) == 0) return true;
  if (!is_complained_of)
    complain({}, std::string("standard output cannot be written: ") + std::strerror(errno));
  is_complained_of = true;
  return false;
}
