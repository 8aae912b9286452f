// Starts the filter with some of its descriptors closed, or open on a device that says nothing.
//
// CLOSED_DESCRIPTORS and NULL_DESCRIPTORS list them, one digit each. A filter that uses its
// processor without end is ended by SIGXCPU.
#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <cstdlib>

namespace {

constexpr rlim_t SECONDS_OF_WORK = 1;  // where some milliseconds are needed
constexpr int CANNOT_START = 95;

char const* list(char const* variable)
{
  char const* const digits = getenv(variable);
  return digits ? digits : "";
}

}  // namespace

int main(int /*argc*/, char* argv[])
{
  rlimit const work{SECONDS_OF_WORK, SECONDS_OF_WORK + 1};
  rlimit const no_core{0, 0};
  setrlimit(RLIMIT_CPU, &work);
  setrlimit(RLIMIT_CORE, &no_core);

  int const nothing = open("/dev/null", O_RDWR | O_CLOEXEC);
  for (char const* digit = list("NULL_DESCRIPTORS"); *digit; ++digit) dup2(nothing, *digit - '0');
  for (char const* digit = list("CLOSED_DESCRIPTORS"); *digit; ++digit) close(*digit - '0');
  execv(FILTER_PATH, argv);
  return CANNOT_START;
}
