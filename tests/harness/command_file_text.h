// The command file of a job with so many directives.
#pragma once

#include <string>

inline std::string command_file_text(std::string const& directive, int count)
{
  std::string text = "#CUPS-COMMAND\n";
  for (int i = 0; i < count; ++i) text += directive + "\n";
  return text;
}
