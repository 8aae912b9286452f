// Stands between velmoctl and libcups: runs the shell commands in REQUEST_HOOK before each
// request, with its number in REQUEST, its operation in OPERATION, and velmoctl's process
// number in VELMOCTL.
#include <cups/cups.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <string>

// NOLINTBEGIN(clang-diagnostic-reserved-identifier): these names are the linker's
extern "C" ipp_t* __real_cupsDoIORequest(http_t* http, ipp_t* request, char const* resource, int in,
                                         int out);

namespace {

void run_hook(ipp_op_t operation)
{
  static int requests = 0;
  char const* const hook = std::getenv("REQUEST_HOOK");
  if (!hook) return;
  setenv("REQUEST", std::to_string(++requests).c_str(), 1);
  setenv("OPERATION", ippOpString(operation), 1);
  setenv("VELMOCTL", std::to_string(getpid()).c_str(), 1);
  pid_t const shell = fork();
  if (shell == 0) execl("/bin/sh", "sh", "-c", hook, nullptr);
  int status = 0;
  if (waitpid(shell, &status, 0) != shell || status != 0) std::abort();
}

}  // namespace

extern "C" ipp_t* __wrap_cupsDoIORequest(http_t* http, ipp_t* request, char const* resource, int in,
                                         int out)
{
  run_hook(ippGetOperation(request));
  return __real_cupsDoIORequest(http, request, resource, in, out);
}
// NOLINTEND(clang-diagnostic-reserved-identifier)
