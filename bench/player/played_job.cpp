// What the scheduler, the backend and the printer do for one job.
#include "bench/player/played_job.h"

#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/wait.h>

#include <array>
#include <stdexcept>

#include "tests/harness/channel_ends.h"
#include "tests/harness/scripted_printer.h"
#include "tests/harness/start_program.h"

namespace {

void never_block(FileDescriptor const& end) { fcntl(end.get(), F_SETFL, O_NONBLOCK); }

void send(FileDescriptor const& end, std::string const& bytes)
{
  if (write(end.get(), bytes.data(), bytes.size()) != static_cast<ssize_t>(bytes.size()))
    throw std::runtime_error("the program does not take its answer");
}

double microseconds(timeval const& time)
{
  return 1e6 * static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec);
}

double microseconds(std::chrono::steady_clock::duration time)
{
  return std::chrono::duration<double, std::micro>(time).count();
}

std::vector<std::string> words_of(Job const& job)
{
  std::vector<std::string> words = job.program;
  for (char const* word : {"1", "user", "title", "1", ""}) words.emplace_back(word);
  words.push_back(job.command_file);
  return words;
}

// The same for every program, so that none has more to copy at its start.
std::vector<std::string> job_environment()
{
  return {"CHARSET=utf-8",      "CONTENT_TYPE=application/vnd.cups-command", "LANG=C.UTF-8",
          "PATH=/usr/bin:/bin", std::string("PPD=") + QUEUE_PPD_PATH,        "PRINTER=photo"};
}

// Half of the ribbon is left, and everything else is as well as can be.
std::string good_status_reply()
{
  std::string reply(192, '\0');
  reply[145] = '\x84';
  reply.replace(148, 4, "\x02\xbc\x01\x5e");
  return reply;
}

}  // namespace

AnsweredProgram answered_job(Job const& job, int queries)
{
  return {words_of(job), job_environment(), answers_for_queries(queries),
          std::vector(static_cast<size_t>(queries), good_status_reply())};
}

PlayedJob::PlayedJob(Job const& job) : start_(Clock::now())
{
  FileDescriptor const input(open("/dev/null", O_RDONLY | O_CLOEXEC));
  ChannelEnds device = pipe_to_harness();
  ChannelEnds messages =
      job.messages == Messages::Pipe ? pipe_to_harness() : socket_ends(SOCK_SEQPACKET);
  ChannelEnds back_channel = pipe_to_program();
  ChannelEnds side_channel = socket_ends(SOCK_STREAM);
  never_block(messages.harness);
  never_block(side_channel.harness);

  device_ = std::move(device.harness);
  messages_ = std::move(messages.harness);
  back_channel_ = std::move(back_channel.harness);
  side_channel_ = std::move(side_channel.harness);
  start_ = Clock::now();
  pid_ = start_program({job.program.front(),
                        words_of(job),
                        job_environment(),
                        {input.get(), device.program.get(), messages.program.get(),
                         back_channel.program.get(), side_channel.program.get()}});
}

FileDescriptor& PlayedJob::end_of(Channel channel)
{
  if (channel == Channel::Device) return device_;
  return channel == Channel::Messages ? messages_ : side_channel_;
}

int PlayedJob::descriptor(Channel channel) const
{
  return const_cast<PlayedJob*>(this)->end_of(channel).get();
}

void PlayedJob::hear(Channel channel)
{
  std::array<char, 65536> buffer;
  ssize_t const got = read(descriptor(channel), buffer.data(), buffer.size());
  if (got < 0 && errno == EAGAIN) return;
  if (got <= 0) {
    end_of(channel).reset();
    return;
  }
  std::string const bytes(buffer.data(), static_cast<size_t>(got));
  if (channel == Channel::Device) hear_device(bytes);
  if (channel == Channel::Messages) hear_message(bytes);
  if (channel == Channel::SideChannel) hear_request(bytes);
}

void PlayedJob::hear_device(std::string const& bytes)
{
  if (bytes != "\x1bV21") return;
  send(back_channel_, good_status_reply());
  replied_ = Clock::now();
}

void PlayedJob::hear_message(std::string const& text)
{
  if (text.find("STATE:") != std::string::npos)
    outcome_.report = microseconds(Clock::now() - replied_);
  outcome_.messages.push_back(text);
}

void PlayedJob::hear_request(std::string const& frame)
{
  bool const probe = frame[0] == SC_GET_BIDI;
  if (frame[0] == SC_DRAIN_OUTPUT) asleep_ = true;
  send(side_channel_, side_channel_frame(frame[0], SC_OK, probe ? "\x01" : ""));
}

bool PlayedJob::has_ended() const
{
  return device_.get() < 0 && messages_.get() < 0 && side_channel_.get() < 0;
}

Outcome PlayedJob::finish()
{
  int status = 0;
  rusage used{};
  if (wait4(pid_, &status, 0, &used) != pid_) throw std::runtime_error("wait4");
  outcome_.wall = microseconds(Clock::now() - start_);
  outcome_.cpu = microseconds(used.ru_utime) + microseconds(used.ru_stime);
  if (status == 0) return std::move(outcome_);

  std::string said;
  for (std::string const& message : outcome_.messages) said += message;
  throw std::runtime_error("a program failed after saying:\n" + said);
}
