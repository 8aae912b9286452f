// The filter's clock in the hands of a test: preloaded into the filter, it lets no time pass.
//
// Every pause, and every wait for a descriptor that is not ready, is told to the harness in
// one packet; it is over when the harness answers with one byte. What the harness has fed to
// the descriptor by then is there; if it has fed nothing, the time is up.
#include <poll.h>
#include <sys/select.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace {

constexpr int HARNESS_IS_GONE = 97;

int control = -1;

// Runs before main. An unbuffered device stream shows a dead printer at the write instead of
// at the flush.
__attribute__((constructor)) void prepare()
{
  char const* number = getenv("CLOCK_DESCRIPTOR");
  if (number != nullptr) control = static_cast<int>(strtol(number, nullptr, 10));
  if (getenv("UNBUFFERED_DEVICE") != nullptr) setvbuf(stdout, nullptr, _IONBF, 0);
}

void tell(char const* text, int length)
{
  char answer = 0;
  ssize_t received = -1;
  if (send(control, text, static_cast<size_t>(length), MSG_NOSIGNAL) == length) {
    do received = recv(control, &answer, 1, 0);
    while (received < 0 && errno == EINTR);
  }
  if (received != 1) _exit(HARNESS_IS_GONE);
}

void tell_pause(char const* call, unsigned length)
{
  char text[64];
  tell(text, snprintf(text, sizeof text, "%s %u", call, length));
}

// A negative time stands for a wait without end.
void tell_wait(int descriptor, long long seconds, long long microseconds)
{
  char text[64];
  tell(text, seconds < 0 ? snprintf(text, sizeof text, "wait for ever on %d", descriptor)
                         : snprintf(text, sizeof text, "wait %lld.%06lld s on %d", seconds,
                                    microseconds, descriptor));
}

int poll_now(pollfd* descriptors, nfds_t count)
{
  timespec now{};
  return static_cast<int>(syscall(SYS_ppoll, descriptors, count, &now, nullptr, 0));
}

// The sets come back changed, so each look needs its own copy of what was asked for.
int select_now(int limit, fd_set* asked, fd_set* ready)
{
  timespec now{};
  *ready = *asked;
  return static_cast<int>(syscall(SYS_pselect6, limit, ready, nullptr, nullptr, &now, nullptr));
}

int first_descriptor(int limit, fd_set const* set)
{
  int descriptor = 0;
  while (descriptor < limit && !FD_ISSET(descriptor, set)) ++descriptor;
  return descriptor;
}

}  // namespace

// The C library names its parameters with reserved words.
// NOLINTBEGIN(readability-inconsistent-declaration-parameter-name)

extern "C" unsigned sleep(unsigned seconds)
{
  tell_pause("sleep", seconds);
  return 0;
}

extern "C" int usleep(useconds_t microseconds)
{
  tell_pause("usleep", microseconds);
  return 0;
}

// libcups waits for the side channel with this, for one descriptor at a time.
extern "C" int poll(pollfd* descriptors, nfds_t count, int milliseconds)
{
  int const ready = poll_now(descriptors, count);
  if (ready != 0 || milliseconds == 0) return ready;
  tell_wait(descriptors[0].fd, milliseconds < 0 ? -1 : milliseconds / 1000,
            milliseconds % 1000 * 1000LL);
  return poll_now(descriptors, count);
}

// libcups waits for the back channel with this, only ever to read.
extern "C" int select(int limit, fd_set* reading, fd_set* writing, fd_set* failing,
                      timeval* timeout)
{
  if (reading == nullptr || writing != nullptr || failing != nullptr) abort();
  fd_set asked = *reading;
  int const ready = select_now(limit, &asked, reading);
  if (ready != 0) return ready;
  tell_wait(first_descriptor(limit, &asked), timeout == nullptr ? -1 : timeout->tv_sec,
            timeout == nullptr ? 0 : timeout->tv_usec);
  return select_now(limit, &asked, reading);
}

// NOLINTEND(readability-inconsistent-declaration-parameter-name)
