// How a PPD file would change, as diff -u shows it.
#include "admin/ppd_diff.h"

#include <dtl/dtl.hpp>
#include <sstream>
#include <vector>

#include "admin/output.h"
#include "admin/ppd_records.h"

namespace {

// The lines as they may be shown: a terminal could not tell their line ends apart.
std::vector<std::string> shown_lines(std::string_view ppd)
{
  std::vector<std::string> lines;
  for (std::size_t at = 0; at < ppd.size();) {
    std::size_t const end = end_of_line(ppd, at);
    std::string_view const line = ppd.substr(at, end - at);
    lines.push_back(printable(line.substr(0, line.find_first_of("\r\n"))));
    at = end;
  }
  return lines;
}

}  // namespace

std::string ppd_diff(std::string_view queue, std::string_view now, std::string_view then)
{
  dtl::Diff<std::string> diff(shown_lines(now), shown_lines(then));
  diff.onHuge();
  diff.compose();
  diff.composeUnifiedHunks();
  std::ostringstream text;
  text << "--- the PPD file of " << printable(queue) << "\n+++ the same as it would be\n";
  diff.printUnifiedFormat(text);
  return text.str();
}
