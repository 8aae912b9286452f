// The job status query on real descriptors, with the simulator's reply at the other end.
#include <gtest/gtest.h>

#include "tests/harness/answered_run.h"
#include "tests/harness/hex.h"
#include "tests/harness/same_text.h"
#include "tests/harness/scripted_printer.h"
#include "tests/harness/simulator_process.h"
#include "tests/harness/tcp_peer.h"
#include "tests/oracle/run_text.h"

namespace {

using Bytes = TcpPeer::Bytes;

std::string const COMMAND("\033V10\0\0", 6);

// What the query says when a simulator with these options answers its command.
std::string ask(std::vector<std::string> const& options, std::size_t reply_length)
{
  SimulatorProcess simulator(options);
  TcpPeer const printer(simulator.port());
  printer.send(Bytes(COMMAND.begin(), COMMAND.end()));
  Bytes const reply = printer.receive(reply_length);
  EXPECT_EQ(reply.size(), reply_length);

  AnsweredRun const run = run_answered({.words = {JOB_STATUS_QUERY},
                                        .answers = {side_channel_frame(SC_DRAIN_OUTPUT, SC_OK)},
                                        .replies = {{reply.begin(), reply.end()}}});
  EXPECT_EQ(run.exit_status, 0);
  EXPECT_EQ(hex(run.device), hex(COMMAND));
  return run.messages;
}

std::string const START = command_start_text("get_job_status", COMMAND);
std::string const END = end_text("get_job_status");

TEST(JobStatusQuery, TwentyBytesAreAReply)
{
  EXPECT_TEXT(ask({"--job-status", "50 31 02 fe"}, 20),
            START
                + "DEBUG: [STS] size=20\n"
                  "DEBUG: [STS] 0000: 00 00 00 00 00 00 00 00 50 31 02 fe 00 00 00 00\n"
                  "DEBUG: [STS] 0010: 00 00 00 00\n"
                + END + "job_status=[0x50,0x31,0x02,0xfe] ready=yes\n");
}

TEST(JobStatusQuery, MoreBytesThanNeededAreTakenWithTheReply)
{
  EXPECT_TEXT(ask({"--job-status", "50 2f 00 00", "--job-reply-length", "33"}, 33),
            START
                + "DEBUG: [STS] size=33\n"
                  "DEBUG: [STS] 0000: 00 00 00 00 00 00 00 00 50 2f 00 00 00 00 00 00\n"
                  "DEBUG: [STS] 0010: 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00 00\n"
                  "DEBUG: [STS] 0020: 00\n"
                + END + "job_status=[0x50,0x2f,0x00,0x00] ready=no\n");
}

TEST(JobStatusQuery, NineteenBytesAndSilenceAreNoReply)
{
  EXPECT_TEXT(ask({"--job-status", "00 00 00 00", "--job-reply-length", "19"}, 19),
              START + failed_read_text(-1) + END + "job_status=[UNAVAILABLE] ready=no\n");
}

}  // namespace
