// The log of a program that stays running: lines that a service manager sorts by their weight.
#include "admin/journal.h"

#include <cstdio>

#include "admin/output.h"

void write_journal(Weight weight, std::string_view subject, std::string_view text)
{
  std::string line = "<" + std::to_string(static_cast<int>(weight)) + ">";
  if (!subject.empty()) line += printable(subject) + ": ";
  line += printable(text) + "\n";
  std::fwrite(line.data(), 1, line.size(), stderr);
}
