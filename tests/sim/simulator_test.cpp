// The real simulator over real sockets: what a spooler's backend and a person get from it.
#include <gtest/gtest.h>
#include <signal.h>

#include <chrono>
#include <cstdint>
#include <string>
#include <vector>

#include "tests/harness/simulator_process.h"
#include "tests/harness/tcp_peer.h"
#include "tests/harness/temporary_file.h"

namespace {

using Bytes = TcpPeer::Bytes;
using Lines = std::vector<std::string>;

Bytes const WAKE_UP{0x1b, 0x45, 0x57, 0x55};
Bytes const STATUS_QUERY{0x1b, 0x56, 0x32, 0x31};
Bytes const JOB_STATUS_QUERY{0x1b, 0x56, 0x31, 0x30, 0x00, 0x00};

// The status reply of a good printer with 350 of 700 prints left.
Bytes good_reply()
{
  Bytes reply(192);
  reply[145] = 0x84;
  reply[148] = 0x02;
  reply[149] = 0xbc;
  reply[150] = 0x01;
  reply[151] = 0x5e;
  return reply;
}

void expect_lines(SimulatorProcess& simulator, Lines const& lines)
{
  for (auto const& line : lines) EXPECT_EQ(simulator.next_line(), line);
}

// Has the simulator execute the order before anything else happens.
void tell(SimulatorProcess& simulator, std::string const& order)
{
  simulator.order(order);
  EXPECT_EQ(simulator.next_line(), "now: " + order);
}

// A reply that takes at least 20 seconds, so that a test is never too late to disturb it.
Lines const SLOW_REPLY{"--delay", "200", "--fragments",
                       "1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,"
                       "1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,"
                       "1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,"
                       "1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1,1"};

// Has a new connection answered at full speed.
void expect_good_answer(SimulatorProcess& simulator, std::uint16_t port)
{
  tell(simulator, "delay 0");
  TcpPeer const peer(port);
  peer.send(STATUS_QUERY);
  EXPECT_EQ(peer.receive(192), good_reply());
}

}  // namespace

TEST(Simulator, AnswersBothQueriesAndTellsWhatItHeard)
{
  SimulatorProcess simulator({});
  TcpPeer peer(simulator.port());
  peer.send(WAKE_UP);
  peer.send(STATUS_QUERY);
  EXPECT_EQ(peer.receive(192), good_reply());
  peer.send(JOB_STATUS_QUERY);
  EXPECT_EQ(peer.receive(20), Bytes(20));
  peer.half_close();
  EXPECT_EQ(peer.receive_all(), Bytes());
  expect_lines(simulator, {"connection opened", "heard wake-up", "heard status query",
                           "answered status query with 192 bytes", "heard job status query",
                           "answered job status query with 20 bytes", "connection closed"});
}

TEST(Simulator, UnknownBytesAreToldAndDoNotEndTheConnection)
{
  SimulatorProcess simulator({});
  TcpPeer const peer(simulator.port());
  peer.send({'A', 0x1b, 0x1b, 'V', '2', '1', 0x00});
  EXPECT_EQ(peer.receive(192), good_reply());
  expect_lines(simulator,
               {"connection opened", "heard unknown byte 0x41", "heard unknown byte 0x1b"});
}

TEST(Simulator, AnEscapeCommandIsHeardAcrossPackets)
{
  SimulatorProcess simulator({});
  TcpPeer const peer(simulator.port());
  peer.send({'A', 0x1b, 'V'});
  // The line about the first byte shows that the packet has been heard.
  expect_lines(simulator, {"connection opened", "heard unknown byte 0x41"});
  peer.send({'2', '1'});
  EXPECT_EQ(peer.receive(192), good_reply());
  expect_lines(simulator, {"heard status query"});
}

TEST(Simulator, SendsPendingAnswersAfterAHalfCloseAndThenCloses)
{
  SimulatorProcess simulator({"--fragments", "100,50", "--delay", "5"});
  TcpPeer const peer(simulator.port());
  peer.send(STATUS_QUERY);
  peer.send(JOB_STATUS_QUERY);
  peer.half_close();
  auto expected = good_reply();
  expected.resize(192 + 20);
  EXPECT_EQ(peer.receive_all(), expected);
}

TEST(Simulator, AnEscapeCommandCutOffByAHalfCloseIsToldAsUnknownBytes)
{
  SimulatorProcess simulator({});
  TcpPeer const peer(simulator.port());
  peer.send({0x1b, 'V'});
  peer.half_close();
  EXPECT_EQ(peer.receive_all(), Bytes());
  expect_lines(simulator, {"connection opened", "heard unknown byte 0x1b",
                           "heard unknown byte 0x56", "connection closed"});
}

TEST(Simulator, SendsAReplyInPieces)
{
  SimulatorProcess simulator({"--fragments", "1,100,50", "--delay", "5"});
  TcpPeer const peer(simulator.port());
  peer.send(STATUS_QUERY);
  EXPECT_EQ(peer.receive(192), good_reply());
  EXPECT_GE(peer.segments(), 4U);
}

TEST(Simulator, PausesBeforeEveryPiece)
{
  SimulatorProcess simulator({"--fragments", "100", "--delay", "50"});
  TcpPeer const peer(simulator.port());
  auto const start = std::chrono::steady_clock::now();
  peer.send(STATUS_QUERY);
  EXPECT_EQ(peer.receive(192), good_reply());
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(100));
}

TEST(Simulator, ALargestReplyArrivesWhole)
{
  SimulatorProcess simulator({"--reply-length", "65535"});
  TcpPeer const peer(simulator.port());
  peer.send(STATUS_QUERY);
  peer.half_close();
  auto expected = good_reply();
  expected.resize(65535);
  EXPECT_EQ(peer.receive_all(), expected);
}

TEST(Simulator, AReplyOfNoBytesIsAnsweredWithNone)
{
  SimulatorProcess simulator({"--reply-length", "0"});
  TcpPeer const peer(simulator.port());
  peer.send(STATUS_QUERY);
  peer.half_close();
  EXPECT_EQ(peer.receive_all(), Bytes());
  expect_lines(simulator, {"connection opened", "heard status query",
                           "answered status query with 0 bytes", "connection closed"});
}

TEST(Simulator, SilentItHearsAndDoesNotAnswer)
{
  SimulatorProcess simulator({"--silent"});
  TcpPeer const peer(simulator.port());
  peer.send(STATUS_QUERY);
  peer.send(JOB_STATUS_QUERY);
  peer.half_close();
  EXPECT_EQ(peer.receive_all(), Bytes());
  expect_lines(simulator, {"connection opened", "heard status query", "heard job status query",
                           "connection closed"});
}

TEST(Simulator, SilenceDoesNotWakeThePrinter)
{
  SimulatorProcess simulator({"--silent", "--asleep", "1"});
  TcpPeer const peer(simulator.port());
  peer.send(STATUS_QUERY);
  expect_lines(simulator, {"connection opened", "heard status query"});
  tell(simulator, "silent off");
  peer.send(STATUS_QUERY);
  auto expected = good_reply();
  expected[5] = 0x01;
  EXPECT_EQ(peer.receive(192), expected);
}

TEST(Simulator, ClosesTheConnectionAfterTheWakeUpWhenTold)
{
  SimulatorProcess simulator({"--close-after-wake-up"});
  auto const port = simulator.port();
  for (int connection = 0; connection < 2; ++connection) {
    TcpPeer const peer(port);
    peer.send(WAKE_UP);
    EXPECT_EQ(peer.receive_all(), Bytes());
    expect_lines(simulator, {"connection opened", "heard wake-up", "connection closed"});
  }
}

TEST(Simulator, HearsNothingMoreOnceItHasClosedTheConnection)
{
  SimulatorProcess simulator({"--close-after-wake-up"});
  TcpPeer const peer(simulator.port());
  peer.send({0x1b, 'E', 'W', 'U', 'A', 0x1b, 'V', '2', '1'});
  expect_lines(simulator, {"connection opened", "heard wake-up", "connection closed"});
  tell(simulator, "total 1");
}

TEST(Simulator, SaysNotAwakeAsOftenAsToldOverAllConnections)
{
  SimulatorProcess simulator({"--asleep", "2"});
  auto const port = simulator.port();
  for (auto const power : Bytes{0x01, 0x01, 0x00}) {
    TcpPeer const peer(port);
    peer.send(STATUS_QUERY);
    auto expected = good_reply();
    expected[5] = power;
    EXPECT_EQ(peer.receive(192), expected);
  }
}

TEST(Simulator, ServesConnectionsAtTheSameTime)
{
  SimulatorProcess simulator({});
  auto const port = simulator.port();
  TcpPeer const first(port);
  TcpPeer const second(port);
  first.send({0x1b, 'V'});
  second.send(STATUS_QUERY);
  EXPECT_EQ(second.receive(192), good_reply());
  first.send({'2', '1'});
  EXPECT_EQ(first.receive(192), good_reply());
}

TEST(Simulator, SurvivesAPeerThatVanishesMidReply)
{
  SimulatorProcess simulator(SLOW_REPLY);
  auto const port = simulator.port();
  TcpPeer peer(port);
  peer.send(STATUS_QUERY);
  EXPECT_EQ(peer.receive(1).size(), 1U);
  peer.vanish();
  expect_lines(simulator, {"connection opened", "heard status query", "connection closed"});
  expect_good_answer(simulator, port);
}

// After its half-close nothing is read from the peer, so only the sending can notice.
TEST(Simulator, SurvivesAPeerThatVanishesMidReplyAfterAHalfClose)
{
  SimulatorProcess simulator(SLOW_REPLY);
  auto const port = simulator.port();
  TcpPeer peer(port);
  peer.send(STATUS_QUERY);
  peer.half_close();
  EXPECT_EQ(peer.receive(1).size(), 1U);
  peer.vanish();
  expect_lines(simulator, {"connection opened", "heard status query", "connection closed"});
  expect_good_answer(simulator, port);
}

TEST(Simulator, IsChangedByOrdersWhileAConnectionIsOpen)
{
  SimulatorProcess simulator({});
  TcpPeer const peer(simulator.port());
  peer.send(STATUS_QUERY);
  EXPECT_EQ(peer.receive(192), good_reply());
  expect_lines(simulator,
               {"connection opened", "heard status query", "answered status query with 192 bytes"});
  tell(simulator, "error 06 02 02");
  tell(simulator, "remaining 0");
  peer.send(STATUS_QUERY);
  auto expected = good_reply();
  expected[131] = 0x06;
  expected[132] = 0x02;
  expected[133] = 0x02;
  expected[150] = 0x00;
  expected[151] = 0x00;
  EXPECT_EQ(peer.receive(192), expected);
}

TEST(Simulator, ABadOrderIsOneLineOnStandardErrorAndNotTheEnd)
{
  SimulatorProcess simulator({});
  simulator.port();
  simulator.order("total many");
  EXPECT_EQ(simulator.next_error_line(), "total: bad value \"many\": expected 0..65535");
  tell(simulator, "total 7");
  simulator.order("quit");
  EXPECT_EQ(simulator.next_line(), "now: quit");
  EXPECT_EQ(simulator.rest_of_errors(), "");
  EXPECT_EQ(simulator.exit_status(), 0);
}

TEST(Simulator, GoesOnAfterTheEndOfStandardInput)
{
  SimulatorProcess simulator({});
  auto const port = simulator.port();
  tell(simulator, "delay 1");
  simulator.end_input();
  TcpPeer const peer(port);
  peer.send(STATUS_QUERY);
  EXPECT_EQ(peer.receive(192), good_reply());
  simulator.signal(SIGTERM);
  EXPECT_EQ(simulator.exit_status(), 0);
}

TEST(Simulator, RunsWithTheNullDeviceAsStandardInput)
{
  SimulatorProcess simulator({}, "/dev/null");
  TcpPeer const peer(simulator.port());
  peer.send(STATUS_QUERY);
  EXPECT_EQ(peer.receive(192), good_reply());
}

TEST(Simulator, TakesOrdersFromAFileWithoutALastNewline)
{
  TemporaryFile const orders("error 06 02 02\n\nremaining 0\r\nreply-length 3");
  SimulatorProcess simulator({}, orders.path().c_str());
  auto const port = simulator.port();
  expect_lines(simulator, {"now: error 06 02 02", "now: remaining 0", "now: reply-length 3"});
  TcpPeer const peer(port);
  peer.send(STATUS_QUERY);
  EXPECT_EQ(peer.receive(3), Bytes(3));
}

TEST(Simulator, EndsAtOnceByASignalWithStatusZero)
{
  for (int const number : {SIGINT, SIGTERM}) {
    SimulatorProcess simulator({"--delay", "65535"});
    TcpPeer const peer(simulator.port());
    peer.send(STATUS_QUERY);
    expect_lines(simulator, {"connection opened", "heard status query"});
    simulator.signal(number);
    EXPECT_EQ(simulator.exit_status(), 0);
  }
}
