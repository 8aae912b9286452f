// A file that a person names on the command line.
#pragma once

#include <string>

struct TextFile {
  std::string text;
  std::string error;  // empty if it could be read
};

// Reads all of it; "-" is standard input.
TextFile read_text_file(std::string const& path);
