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
#include "tests/sim/reply_bytes.h"

namespace {

using Lines = std::vector<std::string>;

Bytes const WAKE_UP{0x1b, 0x45, 0x57, 0x55};
Bytes const STATUS_QUERY{0x1b, 0x56, 0x32, 0x31};
Bytes const JOB_STATUS_QUERY{0x1b, 0x56, 0x31, 0x30, 0x00, 0x00};
Bytes const GOOD_REPLY = status_with({});

// All that a peer sends before its half-close, and what comes of it until the connection closes.
struct Conversation {
  char const* with;
  Lines options;
  Bytes sent;
  Bytes received;
  Lines told;  // between the connection's opening and its end
};

Conversation const CONVERSATIONS[] = {
    {"all commands",
     {},
     join(join(WAKE_UP, STATUS_QUERY), JOB_STATUS_QUERY),
     join(GOOD_REPLY, Bytes(20)),
     {"heard wake-up", "heard status query", "heard job status query",
      "answered status query with 192 bytes", "answered job status query with 20 bytes"}},
    {"unknown bytes around a command",
     {},
     {'A', 0x1b, 0x1b, 'V', '2', '1', 0x00},
     GOOD_REPLY,
     {"heard unknown byte 0x41", "heard unknown byte 0x1b", "heard status query",
      "heard unknown byte 0x00", "answered status query with 192 bytes"}},
    {"a command that the half-close cuts off",
     {},
     {0x1b, 'V'},
     {},
     {"heard unknown byte 0x1b", "heard unknown byte 0x56"}},
    {"answers that are pending at the half-close",
     {"--fragments", "100,50", "--delay", "5"},
     join(STATUS_QUERY, JOB_STATUS_QUERY),
     join(GOOD_REPLY, Bytes(20)),
     {"heard status query", "heard job status query", "answered status query with 192 bytes",
      "answered job status query with 20 bytes"}},
    {"the largest reply",
     {"--reply-length", "65535"},
     STATUS_QUERY,
     join(GOOD_REPLY, Bytes(65535 - 192)),
     {"heard status query", "answered status query with 65535 bytes"}},
    {"a reply of no bytes",
     {"--reply-length", "0"},
     STATUS_QUERY,
     {},
     {"heard status query", "answered status query with 0 bytes"}},
    {"a print",
     {"--count-prints", "--remaining", "7"},
     join({'A', 'B'}, STATUS_QUERY),
     status_with({{150, {0x00, 0x06}}}),
     {"heard unknown byte 0x41", "printed, 6 prints left", "heard unknown byte 0x42",
      "heard status query", "answered status query with 192 bytes"}},
    {"no print, where prints are counted",
     {"--count-prints"},
     STATUS_QUERY,
     GOOD_REPLY,
     {"heard status query", "answered status query with 192 bytes"}},
    {"a silent printer",
     {"--silent"},
     join(STATUS_QUERY, JOB_STATUS_QUERY),
     {},
     {"heard status query", "heard job status query"}},
};

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

void expect_answer(TcpPeer const& peer, Bytes const& reply)
{
  peer.send(STATUS_QUERY);
  EXPECT_EQ(peer.receive(192), reply);
}

}  // namespace

TEST(Simulator, AnswersWhatItHearsAndTellsIt)
{
  for (auto const& conversation : CONVERSATIONS) {
    SCOPED_TRACE(conversation.with);
    SimulatorProcess simulator(conversation.options);
    TcpPeer const peer(simulator.port());
    peer.send(conversation.sent);
    peer.half_close();
    EXPECT_EQ(peer.receive_all(), conversation.received);
    expect_lines(simulator, {"connection opened"});
    expect_lines(simulator, conversation.told);
    expect_lines(simulator, {"connection closed"});
  }
}

TEST(Simulator, AnEscapeCommandIsHeardAcrossPackets)
{
  SimulatorProcess simulator({});
  TcpPeer const peer(simulator.port());
  peer.send({'A', 0x1b, 'V'});
  // The line about the first byte shows that the packet has been heard.
  expect_lines(simulator, {"connection opened", "heard unknown byte 0x41"});
  peer.send({'2', '1'});
  EXPECT_EQ(peer.receive(192), GOOD_REPLY);
  expect_lines(simulator, {"heard status query"});
}

TEST(Simulator, SendsAReplyInPieces)
{
  SimulatorProcess simulator({"--fragments", "1,100,50", "--delay", "5"});
  TcpPeer const peer(simulator.port());
  expect_answer(peer, GOOD_REPLY);
  EXPECT_GE(peer.segments(), 4U);
}

TEST(Simulator, PausesBeforeEveryPiece)
{
  SimulatorProcess simulator({"--fragments", "100", "--delay", "50"});
  TcpPeer const peer(simulator.port());
  auto const start = std::chrono::steady_clock::now();
  expect_answer(peer, GOOD_REPLY);
  EXPECT_GE(std::chrono::steady_clock::now() - start, std::chrono::milliseconds(100));
}

TEST(Simulator, SilenceDoesNotWakeThePrinter)
{
  SimulatorProcess simulator({"--silent", "--asleep", "1"});
  TcpPeer const peer(simulator.port());
  peer.send(STATUS_QUERY);
  expect_lines(simulator, {"connection opened", "heard status query"});
  tell(simulator, "silent off");
  expect_answer(peer, status_with({{5, {0x01}}}));
}

TEST(Simulator, ClosesTheConnectionAfterTheWakeUpWhenToldAndHearsNothingMore)
{
  SimulatorProcess simulator({"--close-after-wake-up"});
  auto const port = simulator.port();
  for (auto const& sent : {WAKE_UP, join(join(WAKE_UP, {'A'}), STATUS_QUERY)}) {
    TcpPeer const peer(port);
    peer.send(sent);
    EXPECT_EQ(peer.receive_all(), Bytes());
    expect_lines(simulator, {"connection opened", "heard wake-up", "connection closed"});
  }
  tell(simulator, "total 1");
}

TEST(Simulator, SaysNotAwakeAsOftenAsToldOverAllConnections)
{
  SimulatorProcess simulator({"--asleep", "2"});
  auto const port = simulator.port();
  for (auto const power : Bytes{0x01, 0x01, 0x00}) {
    TcpPeer const peer(port);
    expect_answer(peer, status_with({{5, {power}}}));
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
  EXPECT_EQ(second.receive(192), GOOD_REPLY);
  first.send({'2', '1'});
  EXPECT_EQ(first.receive(192), GOOD_REPLY);
}

// After its half-close nothing is read from the peer, so only the sending can notice.
TEST(Simulator, SurvivesAPeerThatVanishesMidReplyAlsoAfterAHalfClose)
{
  for (bool const half_closed : {false, true}) {
    SCOPED_TRACE(half_closed ? "after a half-close" : "before a half-close");
    SimulatorProcess simulator(SLOW_REPLY);
    auto const port = simulator.port();
    TcpPeer peer(port);
    peer.send(STATUS_QUERY);
    if (half_closed) peer.half_close();
    EXPECT_EQ(peer.receive(1).size(), 1U);
    peer.vanish();
    expect_lines(simulator, {"connection opened", "heard status query", "connection closed"});
    tell(simulator, "delay 0");
    expect_answer(TcpPeer(port), GOOD_REPLY);
  }
}

TEST(Simulator, IsChangedByOrdersWhileAConnectionIsOpen)
{
  SimulatorProcess simulator({});
  TcpPeer const peer(simulator.port());
  expect_answer(peer, GOOD_REPLY);
  expect_lines(simulator,
               {"connection opened", "heard status query", "answered status query with 192 bytes"});
  tell(simulator, "error 06 02 02");
  tell(simulator, "remaining 0");
  expect_answer(peer, status_with({{131, {0x06, 0x02, 0x02}}, {150, {0x00, 0x00}}}));
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
  expect_answer(peer, GOOD_REPLY);
  simulator.signal(SIGTERM);
  EXPECT_EQ(simulator.exit_status(), 0);
}

TEST(Simulator, RunsWithTheNullDeviceAsStandardInput)
{
  SimulatorProcess simulator({}, "/dev/null");
  TcpPeer const peer(simulator.port());
  expect_answer(peer, GOOD_REPLY);
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
