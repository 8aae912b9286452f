// Any bytes as the scheduler's log: told the same whatever the pieces in which they are read, and
// none of them reaches a terminal as an order or makes a line of its own.
#include <cstdint>
#include <string>

#include "admin/log_explainer.h"
#include "admin/reason_texts.h"
#include "tests/harness/require.h"

namespace {

bool is_line_of_ours(std::string_view line)
{
  return line.empty() || line.starts_with("Job ") || line.starts_with("  ");
}

void check(std::string_view told)
{
  require(is_utf8(told), "what is told is UTF-8");
  for (std::size_t at = 0; at < told.size();) {
    std::size_t const end = told.find('\n', at);
    require(end != std::string_view::npos, "the last line ends");
    require(is_line_of_ours(told.substr(at, end - at)), "every line is one of ours");
    for (char const ch : told.substr(at, end - at))
      require(static_cast<unsigned char>(ch) >= ' ' && ch != 0x7f, "no byte is an order");
    at = end + 1;
  }
}

}  // namespace

// The first byte says where the log is cut in two.
extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
  if (size == 0) return 0;
  std::string_view const log(reinterpret_cast<char const*>(data) + 1, size - 1);
  std::size_t const cut = data[0] * log.size() / 255;

  LogExplainer whole({});
  std::string told = whole.add(log);
  told += whole.finish();
  require(told.empty() != whole.hasTold(), "what is told is known to be told");
  check(told);

  LogExplainer in_pieces({});
  std::string again = in_pieces.add(log.substr(0, cut));
  again += in_pieces.add(log.substr(cut));
  again += in_pieces.finish();
  require_equal(again, told);

  LogExplainer first_only(1);
  std::string of_first = first_only.add(log);
  of_first += first_only.finish();
  check(of_first);
  return 0;
}
