// The job status query on real descriptors, with the simulator's reply at the other end.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <array>
#include <string>
#include <vector>

#include "tests/sim/simulator_process.h"
#include "tests/sim/tcp_peer.h"

namespace {

using Bytes = TcpPeer::Bytes;

std::string read_all(int descriptor)
{
  std::string text;
  std::array<char, 4096> buffer{};
  for (ssize_t got = 0; (got = read(descriptor, buffer.data(), buffer.size())) > 0;)
    text.append(buffer.data(), static_cast<std::size_t>(got));
  return text;
}

Bytes read_exactly(int descriptor, std::size_t count)
{
  Bytes bytes(count);
  std::size_t done = 0;
  while (done < count) {
    ssize_t const got = read(descriptor, bytes.data() + done, count - done);
    if (got <= 0) break;
    done += static_cast<std::size_t>(got);
  }
  bytes.resize(done);
  return bytes;
}

// The query in a process of its own, with this process as its backend.
class QueryProcess {
public:
  QueryProcess()
  {
    std::array<int, 2> stream{};
    std::array<int, 2> text{};
    std::array<int, 2> replies{};
    std::array<int, 2> requests{};
    EXPECT_EQ(pipe2(stream.data(), O_CLOEXEC), 0);
    EXPECT_EQ(pipe2(text.data(), O_CLOEXEC), 0);
    EXPECT_EQ(pipe2(replies.data(), O_CLOEXEC), 0);
    EXPECT_EQ(socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, requests.data()), 0);
    // As the scheduler does; the library would block on this descriptor for ever.
    fcntl(replies[0], F_SETFL, O_NONBLOCK);

    pid = fork();
    if (pid == 0) {
      // Above the targets first, so that no duplicate lands on a source.
      std::array<int, 4> sources{stream[1], text[1], replies[0], requests[1]};
      for (int& source : sources) source = fcntl(source, F_DUPFD_CLOEXEC, 20);
      for (int target = 1; target <= 4; ++target)
        dup2(sources[static_cast<std::size_t>(target - 1)], target);
      execl(JOB_STATUS_QUERY, JOB_STATUS_QUERY, nullptr);
      _exit(127);
    }
    for (int theirs : {stream[1], text[1], replies[0], requests[1]}) close(theirs);
    device = stream[0];
    messages = text[0];
    back_channel = replies[1];
    side_channel = requests[0];
  }

  ~QueryProcess()
  {
    for (int mine : {device, messages, back_channel, side_channel}) close(mine);
  }

  QueryProcess(QueryProcess const&) = delete;
  QueryProcess& operator=(QueryProcess const&) = delete;

  [[nodiscard]] Bytes command() const { return read_exactly(device, 6); }

  // Answers the drain only when the reply is already there: no race with the read's timeout.
  void deliver(Bytes const& reply) const
  {
    EXPECT_EQ(write(back_channel, reply.data(), reply.size()), static_cast<ssize_t>(reply.size()));
    EXPECT_EQ(read_exactly(side_channel, 4), (Bytes{2, 0, 0, 0}));
    Bytes const drained{2, 1, 0, 0};
    EXPECT_EQ(write(side_channel, drained.data(), drained.size()), 4);
  }

  // What it said, once it has ended as it should, without a further byte for the printer.
  [[nodiscard]] std::string end() const
  {
    std::string text = read_all(messages);
    EXPECT_EQ(read_all(device), "");
    int status = -1;
    waitpid(pid, &status, 0);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
    return text;
  }

private:
  pid_t pid = -1;
  int device = -1;
  int messages = -1;
  int back_channel = -1;
  int side_channel = -1;
};

// Passes command and reply between the query and a simulator with these options.
std::string ask(std::vector<std::string> const& options, std::size_t reply_length)
{
  SimulatorProcess simulator(options);
  TcpPeer const printer(simulator.port());
  QueryProcess const query;

  Bytes const command = query.command();
  EXPECT_EQ(command, (Bytes{0x1b, 0x56, 0x31, 0x30, 0x00, 0x00}));
  printer.send(command);
  Bytes const reply = printer.receive(reply_length);
  EXPECT_EQ(reply.size(), reply_length);
  query.deliver(reply);
  return query.end();
}

std::string const START =
    "DEBUG: get_job_status() START\n"
    "DEBUG: [CMD] size=6\n"
    "DEBUG: [CMD] 0000: 1b 56 31 30 00 00\n";
std::string const END = "DEBUG: get_job_status() END\n";

TEST(JobStatusQuery, TwentyBytesAreAReply)
{
  EXPECT_EQ(ask({"--job-status", "50 31 02 fe"}, 20),
            START
                + "DEBUG: [STS] size=20\n"
                  "DEBUG: [STS] 0000: 00 00 00 00 00 00 00 00 50 31 02 fe 00 00 00 00\n"
                  "DEBUG: [STS] 0010: 00 00 00 00\n"
                + END + "job_status=[0x50,0x31,0x02,0xfe] ready=yes\n");
}

TEST(JobStatusQuery, MoreBytesThanNeededAreTakenWithTheReply)
{
  EXPECT_EQ(ask({"--job-status", "50 2f 00 00", "--job-reply-length", "33"}, 33),
            START
                + "DEBUG: [STS] size=33\n"
                  "DEBUG: [STS] 0000: 00 00 00 00 00 00 00 00 50 2f 00 00 00 00 00 00\n"
                  "DEBUG: [STS] 0010: 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00\n"
                  "DEBUG: [STS] 0020: 00\n"
                + END + "job_status=[0x50,0x2f,0x00,0x00] ready=no\n");
}

TEST(JobStatusQuery, NineteenBytesAndSilenceAreNoReply)
{
  EXPECT_EQ(ask({"--job-status", "00 00 00 00", "--job-reply-length", "19"}, 19),
            START + "DEBUG: cupsBackChannelRead() failed. ret=-1\n" + END
                + "job_status=[UNAVAILABLE] ready=no\n");
}

}  // namespace
