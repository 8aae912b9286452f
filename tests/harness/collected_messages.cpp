// The replaced writev; the linker sends it here with --wrap.
#include "tests/harness/collected_messages.h"

#include <sys/uio.h>
#include <unistd.h>

std::string& collected_messages()
{
  static std::string messages;
  return messages;
}

// The names that --wrap asks for are reserved ones; there is no other way to spell them.
// NOLINTBEGIN(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
extern "C" {

ssize_t __real_writev(int descriptor, iovec const* pieces, int count);

ssize_t __wrap_writev(int descriptor, iovec const* pieces, int count)
{
  if (descriptor != STDERR_FILENO) return __real_writev(descriptor, pieces, count);
  std::string& messages = collected_messages();
  auto const before = messages.size();
  for (int i = 0; i < count; ++i)
    messages.append(static_cast<char const*>(pieces[i].iov_base), pieces[i].iov_len);
  return static_cast<ssize_t>(messages.size() - before);
}

}  // extern "C"
// NOLINTEND(bugprone-reserved-identifier,cert-dcl37-c,cert-dcl51-cpp)
