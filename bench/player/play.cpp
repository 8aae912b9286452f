// Plays one job or hundreds of them at once, in one loop.
#include "bench/player/play.h"

#include <sys/epoll.h>

#include <array>
#include <csignal>
#include <memory>
#include <stdexcept>

namespace {

constexpr std::array CHANNELS{Channel::Device, Channel::Messages, Channel::SideChannel};

class Play {
public:
  Play(std::vector<Job> const& jobs, Starts starts)
      : jobs_(jobs), starts_(starts), outcomes_(jobs.size()), events_(epoll_create1(EPOLL_CLOEXEC))
  {
    std::signal(SIGPIPE, SIG_IGN);
  }

  std::vector<Outcome> run()
  {
    while (ended_ < jobs_.size()) {
      while (may_start()) start();
      hear_some();
    }
    return std::move(outcomes_);
  }

private:
  bool may_start() const
  {
    if (played_.size() == jobs_.size()) return false;
    return played_.empty() || starts_ == Starts::AtOnce || !played_.back()
           || played_.back()->is_quiet();
  }

  void start()
  {
    size_t const index = played_.size();
    played_.push_back(std::make_unique<PlayedJob>(jobs_[index]));
    for (size_t i = 0; i < CHANNELS.size(); ++i) {
      epoll_event event{EPOLLIN, {.u64 = index * CHANNELS.size() + i}};
      epoll_ctl(events_.get(), EPOLL_CTL_ADD, played_[index]->descriptor(CHANNELS[i]), &event);
    }
  }

  void hear_some()
  {
    std::array<epoll_event, 64> events;
    int const count = epoll_wait(events_.get(), events.data(), events.size(), -1);
    for (int i = 0; i < count; ++i) {
      auto const source = static_cast<size_t>(events[static_cast<size_t>(i)].data.u64);
      hear(source / CHANNELS.size(), CHANNELS[source % CHANNELS.size()]);
    }
  }

  void hear(size_t index, Channel channel)
  {
    played_[index]->hear(channel);
    if (!played_[index]->has_ended()) return;
    outcomes_[index] = played_[index]->finish();
    played_[index].reset();
    ++ended_;
  }

  std::vector<Job> const& jobs_;
  Starts starts_;
  std::vector<Outcome> outcomes_;
  FileDescriptor events_;
  std::vector<std::unique_ptr<PlayedJob>> played_{};
  size_t ended_ = 0;
};

}  // namespace

std::vector<Outcome> play(std::vector<Job> const& jobs, Starts starts)
{
  return Play(jobs, starts).run();
}

Outcome play(Job const& job) { return play(std::vector{job}).front(); }
