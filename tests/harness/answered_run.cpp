// A program whose answers all lie ready in its channels when it starts.
#include "tests/harness/answered_run.h"

#include <sys/wait.h>

#include "tests/harness/channel_ends.h"
#include "tests/harness/memory_file.h"
#include "tests/harness/scripted_printer.h"
#include "tests/harness/start_program.h"

namespace {

// Packets keep the borders between what is read. A read that finds none fails at once.
ChannelEnds filled_channel(std::vector<std::string> const& packets)
{
  ChannelEnds channel = socket_ends(SOCK_SEQPACKET);
  fcntl(channel.program.get(), F_SETFL, O_NONBLOCK);
  for (std::string const& packet : packets)
    if (write(channel.harness.get(), packet.data(), packet.size())
        != static_cast<ssize_t>(packet.size()))
      throw std::runtime_error("a channel does not take its bytes");
  return channel;
}

}  // namespace

std::vector<std::string> answers_for_queries(int queries)
{
  std::vector<std::string> answers(static_cast<std::size_t>(2 + queries),
                                   side_channel_frame(SC_DRAIN_OUTPUT, SC_OK));
  answers.front() = side_channel_frame(SC_GET_BIDI, SC_OK, "\x01");
  return answers;
}

AnsweredRun run_answered(AnsweredProgram const& program)
{
  FileDescriptor const nothing(open("/dev/null", O_RDONLY | O_CLOEXEC));
  MemoryFile const device("device");
  MemoryFile const messages("messages");
  ChannelEnds const back = filled_channel(program.replies);
  ChannelEnds const side = filled_channel(program.answers);
  pid_t const pid = start_program(
      {program.words.front(),
       program.words,
       program.environment,
       {nothing.get(), device.number, messages.number, back.program.get(), side.program.get()}});
  int status = 0;
  waitpid(pid, &status, 0);
  return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, messages.text(), device.text()};
}
