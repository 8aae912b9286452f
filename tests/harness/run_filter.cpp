// The turns that the filter and its surroundings take until the filter has ended.
#include "tests/harness/run_filter.h"

#include <poll.h>
#include <sys/socket.h>
#include <sys/wait.h>

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>

#include "tests/harness/hex.h"

namespace {

using Clock = std::chrono::steady_clock;

// Real time without a message, where a run needs some milliseconds: only a filter that hangs meets
// it.
constexpr std::chrono::seconds DEADLINE{60};
// More than any run says: only a filter that never ends meets it.
constexpr std::size_t MOST_BYTES = 1 << 28;

// One packet, or nothing if there is none yet or ever again.
std::string receive_packet(FileDescriptor const& socket)
{
  std::string packet(1 << 16, '\0');
  ssize_t const size = recv(socket.get(), packet.data(), packet.size(), MSG_DONTWAIT);
  packet.resize(size > 0 ? static_cast<size_t>(size) : 0);
  return packet;
}

std::string end_event(int wait_status)
{
  if (WIFEXITED(wait_status)) return "exit " + std::to_string(WEXITSTATUS(wait_status)) + "\n";
  return "signal " + std::to_string(WTERMSIG(wait_status)) + "\n";
}

class Run {
public:
  Run(Job const& job, PrinterScript const& script) : filter_(start_filter(job)), printer_(script) {}

  Transcript play()
  {
    while (next_turn()) continue;
    collect();
    int status = 0;
    waitpid(filter_.pid, &status, 0);
    transcript_.events += end_event(status);
    return std::move(transcript_);
  }

private:
  // Returns false when the filter has ended, by itself or by the deadline.
  bool next_turn()
  {
    std::array<pollfd, 2> sources{
        {{filter_.clock.get(), POLLIN, 0}, {filter_.messages.get(), POLLIN, 0}}};
    auto const left =
        std::chrono::duration_cast<std::chrono::milliseconds>(deadline_ - Clock::now()).count();
    if (left <= 0 || transcript_.messages.size() > MOST_BYTES) return give_up();
    int const ready = poll(sources.data(), sources.size(), static_cast<int>(left));
    if (ready <= 0) return ready == 0 || errno == EINTR;
    collect_messages();
    return sources[0].revents == 0 || answer_clock();
  }

  bool give_up()
  {
    kill(filter_.pid, SIGKILL);
    transcript_.events += "still running at the deadline\n";
    return false;
  }

  bool answer_clock()
  {
    std::string const report = receive_packet(filter_.clock);
    if (report.empty()) return false;
    collect();
    transcript_.events += report + "\n";
    if (report.starts_with("wait")) feed(report.back() == '3');
    if (printer_.hangs_up()) filter_.device.reset();
    return send(filter_.clock.get(), "", 1, MSG_NOSIGNAL) == 1;
  }

  void feed(bool back_channel)
  {
    FileDescriptor& channel = back_channel ? filter_.back_channel : filter_.side_channel;
    Feed const feed = back_channel ? printer_.back_channel_feed() : printer_.side_channel_feed();
    if (!feed.bytes.empty()
        && write(channel.get(), feed.bytes.data(), feed.bytes.size())
               != static_cast<ssize_t>(feed.bytes.size()))
      transcript_.events += "the channel does not take its bytes\n";
    if (feed.ends) channel.reset();
  }

  // The filter stands still or is gone: all that it has written can be had.
  void collect()
  {
    collect_messages();
    if (std::string const bytes = read_available(filter_.device); !bytes.empty()) {
      transcript_.events += "device " + hex(bytes) + "\n";
      printer_.hear_device(bytes);
    }
    if (std::string const frame = read_available(filter_.side_channel); !frame.empty()) {
      transcript_.events += "request " + hex(frame) + "\n";
      printer_.hear_request(frame);
    }
  }

  void collect_messages()
  {
    for (std::string packet; !(packet = receive_packet(filter_.messages)).empty();) {
      transcript_.messages += packet;
      transcript_.writes.push_back(packet);
      deadline_ = Clock::now() + DEADLINE;
    }
  }

  FilterProcess filter_;
  ScriptedPrinter printer_;
  Transcript transcript_{};
  Clock::time_point deadline_ = Clock::now() + DEADLINE;
};

}  // namespace

Transcript run_filter(Job const& job, PrinterScript const& script)
{
  signal(SIGPIPE, SIG_IGN);  // a channel whose filter has died is told by the transcript
  return Run(job, script).play();
}

Transcript run_commands(std::string const& commands, PrinterScript const& script)
{
  return run_filter({.standard_input = commands}, script);
}

Transcript run_file(std::string const& path, PrinterScript const& script)
{
  return run_filter({.arguments = {"1", "user", "title", "1", "", path}}, script);
}
