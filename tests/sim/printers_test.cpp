// Several printers of one simulator: what each has of its own, and how it is spoken to.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include "tests/harness/simulator_process.h"
#include "tests/harness/tcp_peer.h"
#include "tests/sim/reply_bytes.h"

namespace {

using Lines = std::vector<std::string>;
using Ports = std::vector<std::uint16_t>;

Bytes const STATUS_QUERY{0x1b, 0x56, 0x32, 0x31};

Ports ports_of(SimulatorProcess& simulator, int count)
{
  Ports ports;
  for (int i = 0; i < count; ++i) ports.push_back(simulator.port());
  for (auto const port : ports) EXPECT_GE(port, 1024) << "somebody else's";
  return ports;
}

// What the printer at this port tells of itself.
Bytes reply_of(std::uint16_t port)
{
  TcpPeer const peer(port);
  peer.send(STATUS_QUERY);
  peer.half_close();
  return peer.receive_all();
}

Bytes reply_with_prints_left(std::uint8_t prints) { return status_with({{150, {0x00, prints}}}); }

// Has the simulator execute the order before anything else happens.
void tell(SimulatorProcess& simulator, std::string const& order)
{
  simulator.order(order);
  EXPECT_EQ(simulator.next_line(), "now: " + order);
}

void expect_lines(SimulatorProcess& simulator, Lines const& lines)
{
  for (auto const& line : lines) EXPECT_EQ(simulator.next_line(), line);
}

}  // namespace

TEST(Printers, BeginAlikeAndAreChangedOneByOne)
{
  SimulatorProcess simulator({"--printers", "3", "--remaining", "9"});
  auto const ports = ports_of(simulator, 3);
  tell(simulator, "2 remaining 7");
  tell(simulator, "3 remaining 8");
  EXPECT_EQ(reply_of(ports[0]), reply_with_prints_left(9));
  EXPECT_EQ(reply_of(ports[1]), reply_with_prints_left(7));
  EXPECT_EQ(reply_of(ports[2]), reply_with_prints_left(8));
}

TEST(Printers, AnOrderWithoutANumberIsForAll)
{
  SimulatorProcess simulator({"--printers", "2"});
  auto const ports = ports_of(simulator, 2);
  tell(simulator, "remaining 5");
  for (auto const port : ports) EXPECT_EQ(reply_of(port), reply_with_prints_left(5));
}

TEST(Printers, WhatHappensIsToldWithThePrintersNumber)
{
  SimulatorProcess simulator({"--printers", "2", "--count-prints"});
  auto const ports = ports_of(simulator, 2);
  TcpPeer const peer(ports[1]);
  peer.send({'A', 0x1b, 0x56, 0x32, 0x31});
  peer.half_close();
  EXPECT_EQ(peer.receive_all().size(), 192U);
  expect_lines(simulator, {"2: connection opened", "2: heard unknown byte 0x41",
                           "2: printed, 349 prints left", "2: heard status query",
                           "2: answered status query with 192 bytes", "2: connection closed"});
}

TEST(Printers, AWrongNumberOrOrderIsRefusedAndChangesNothing)
{
  SimulatorProcess simulator({"--printers", "2"});
  auto const ports = ports_of(simulator, 2);
  for (auto const& [order, refusal] : std::vector<std::pair<std::string, std::string>>{
           {"0 remaining 1", "no printer 0: there are 2"},
           {"3 remaining 1", "no printer 3: there are 2"},
           {"65537 remaining 1", "no printer 65537: there are 2"},
           {"1x remaining 1", "no printer 1x: there are 2"},
           {"1 remaining few", "remaining: bad value \"few\": expected 0..65535"},
           {"2 quit", "quit: ends all printers, so it takes no number"},
       }) {
    simulator.order(order);
    EXPECT_EQ(simulator.next_error_line(), refusal);
  }
  for (auto const port : ports) EXPECT_EQ(reply_of(port), status_with({}));
}

TEST(Printers, OneThatIsOffRefusesConnectionsUntilItIsOnAgain)
{
  SimulatorProcess simulator({"--printers", "2"});
  auto const ports = ports_of(simulator, 2);
  // A connection that the printer closed first keeps its port busy for a while.
  EXPECT_EQ(reply_of(ports[0]), status_with({}));
  expect_lines(simulator, {"1: connection opened", "1: heard status query",
                           "1: answered status query with 192 bytes", "1: connection closed"});
  for (auto const* order : {"1 off", "1 off"}) tell(simulator, order);
  EXPECT_TRUE(is_refused(ports[0]));
  EXPECT_EQ(reply_of(ports[1]), status_with({}));
  expect_lines(simulator, {"2: connection opened", "2: heard status query",
                           "2: answered status query with 192 bytes", "2: connection closed"});
  for (auto const* order : {"1 on", "1 on"}) tell(simulator, order);
  for (int i = 0; i < 3; ++i) EXPECT_EQ(reply_of(ports[0]), status_with({}));
}

TEST(Printers, ASinglePrinterIsSwitchedOffAndOnWithoutANumber)
{
  SimulatorProcess simulator({});
  auto const port = simulator.port();
  tell(simulator, "off");
  EXPECT_TRUE(is_refused(port));
  tell(simulator, "on");
  EXPECT_EQ(reply_of(port), status_with({}));
}

TEST(Printers, FollowEachOtherFromAGivenPort)
{
  // Below those that are given to whoever asks for any; somebody may have taken one all the same.
  for (int first = 20000; first < 30000; first += 500) {
    SimulatorProcess simulator({"--printers", "3", "--port", std::to_string(first)});
    auto const line = simulator.next_line();
    if (line != "listening on 127.0.0.1:" + std::to_string(first)) continue;
    EXPECT_EQ(simulator.port(), first + 1);
    EXPECT_EQ(simulator.port(), first + 2);
    return;
  }
  FAIL() << "no three ports are free";
}
