// The writev that collects.
#include "tests/harness/collected_messages.h"

#include <unistd.h>

#include "tests/harness/replaced_calls.h"

namespace {

ssize_t collect(int descriptor, iovec const* pieces, int count)
{
  if (descriptor != STDERR_FILENO) return REAL_CALLS.writev(descriptor, pieces, count);
  std::string& messages = collected_messages();
  auto const before = messages.size();
  for (int i = 0; i < count; ++i)
    messages.append(static_cast<char const*>(pieces[i].iov_base), pieces[i].iov_len);
  return static_cast<ssize_t>(messages.size() - before);
}

[[maybe_unused]] auto const* const taken = &(replaced_calls.writev = collect);

}  // namespace

std::string& collected_messages()
{
  static std::string messages;
  return messages;
}
