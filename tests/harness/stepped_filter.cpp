// The steps, on the descriptors of the harness.
#include "tests/harness/stepped_filter.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/syscall.h>
#include <sys/wait.h>

#include <array>
#include <csignal>

namespace {

constexpr int PATIENCE = 60000;  // milliseconds; only a filter that hangs meets it

bool readable(FileDescriptor const& descriptor, int milliseconds)
{
  pollfd source{descriptor.get(), POLLIN, 0};
  return poll(&source, 1, milliseconds) == 1;
}

void feed(FileDescriptor& channel, Feed const& bytes)
{
  if (write(channel.get(), bytes.bytes.data(), bytes.bytes.size()) < 0 || bytes.ends)
    channel.reset();
}

}  // namespace

SteppedFilter::SteppedFilter(Job const& job, PrinterScript script)
    : filter_(start_filter(job)), printer_(std::move(script))
{
}

SteppedFilter::~SteppedFilter()
{
  if (filter_.pid <= 0) return;
  kill(filter_.pid, SIGKILL);
  waitpid(filter_.pid, nullptr, 0);
}

std::string SteppedFilter::next_wait()
{
  if (!readable(filter_.clock, PATIENCE)) return "nothing for a minute";
  return wait_ = read_available(filter_.clock);
}

void SteppedFilter::go_on()
{
  std::string const heard = device_is_full_ ? "" : read_available(filter_.device);
  device_ += heard;
  if (!heard.empty()) printer_.hear_device(heard);
  std::string const request = read_available(filter_.side_channel);
  if (!request.empty()) printer_.hear_request(request);
  if (wait_.ends_with("on 3")) feed(filter_.back_channel, printer_.back_channel_feed());
  if (wait_.ends_with("on 4")) feed(filter_.side_channel, printer_.side_channel_feed());
  send(filter_.clock.get(), "", 1, MSG_NOSIGNAL);
}

int SteppedFilter::terminate()
{
  int status = 0;
  FileDescriptor const process(static_cast<int>(syscall(SYS_pidfd_open, filter_.pid, 0)));
  kill(filter_.pid, SIGTERM);
  if (!readable(process, PATIENCE)) kill(filter_.pid, SIGKILL);
  waitpid(filter_.pid, &status, 0);
  filter_.pid = -1;
  return WIFSIGNALED(status) ? WTERMSIG(status) : 0;
}

std::string SteppedFilter::messages() { return messages_ += read_available(filter_.messages); }

std::string SteppedFilter::device() { return device_ += read_available(filter_.device); }

void SteppedFilter::wait_for_message(std::string const& text)
{
  while (messages().find(text) == std::string::npos && readable(filter_.messages, PATIENCE))
    continue;
}

// Linux opens the other end of a pipe by the name of this one.
void SteppedFilter::fill_device()
{
  std::string const path = "/proc/self/fd/" + std::to_string(filter_.device.get());
  FileDescriptor const writer(open(path.c_str(), O_WRONLY | O_NONBLOCK));
  std::array<char, 4096> const filling{};
  while (write(writer.get(), filling.data(), filling.size()) > 0) continue;
  while (write(writer.get(), filling.data(), 1) > 0) continue;
  device_is_full_ = true;
}
