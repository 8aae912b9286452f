// A file that a person names on the command line.
#include "admin/text_file.h"

#include <cerrno>
#include <cstdio>
#include <cstring>

namespace {

TextFile read_all(std::FILE* file)
{
  TextFile result;
  char buffer[4096];
  while (std::size_t const size = std::fread(buffer, 1, sizeof buffer, file))
    result.text.append(buffer, size);
  if (std::ferror(file)) result.error = "cannot be read: " + std::string(std::strerror(errno));
  return result;
}

}  // namespace

TextFile read_text_file(std::string const& path)
{
  if (path == "-") return read_all(stdin);
  std::FILE* const file = std::fopen(path.c_str(), "re");
  if (!file) return {{}, "cannot be read: " + std::string(std::strerror(errno))};
  TextFile result = read_all(file);
  std::fclose(file);
  return result;
}
