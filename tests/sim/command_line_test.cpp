// The command line of the real simulator: what it offers and what it refuses.
#include <gtest/gtest.h>

#include <cstdint>
#include <sstream>
#include <string>
#include <vector>

#include "tests/harness/simulator_process.h"
#include "tests/harness/tcp_peer.h"
#include "tests/sim/reply_bytes.h"

namespace {

struct Refused {
  std::vector<std::string> options;
  char const* message;  // the first line of standard error
};

// The text with one blank between its words: how it is laid out is the library's affair.
std::string words_of(std::string const& text)
{
  std::istringstream stream(text);
  std::string words;
  for (std::string word; stream >> word;) words += word + " ";
  return words;
}

}  // namespace

TEST(SimulatorCommandLine, HelpTellsEveryOptionWithItsUnitAndDefault)
{
  SimulatorProcess simulator({"--help"});
  auto const help = words_of(simulator.rest_of_output());
  for (std::string const option : {
           "--port 0..65535 TCP port on 127.0.0.1, 0 picks a free one (default 0)",
           "--printers 1..65535 So many printers, numbered from 1, each with a state and a port of "
           "its own, that of --port and those behind it (default 1)",
           "--error \"HH HH HH\" Printer error code, three hex bytes (default 00 00 00)",
           "--total 0..65535 Capacity of the ribbon, in prints (default 700)",
           "--remaining 0..65535 Prints left on the ribbon (default 350)",
           "--ink-sheet HH Ink sheet type, one hex byte (default 84)",
           "--power HH Power state once awake, one hex byte; 00 is awake (default 00)",
           "--mechanism \"HH HH\" Mechanism state, two hex bytes (default 00 00)",
           "--memory HH Memory state, one hex byte; ff is full (default 00)",
           "--asleep 0..65535 Status replies that say not awake (power state 01) before it is "
           "awake "
           "(default 0)",
           "--reply-length 0..65535 Length of the status reply, in bytes (default 192)",
           "--fragments N,N,...|whole Sizes of the pieces of a reply, in bytes; the rest goes as a "
           "last piece (default whole)",
           "--delay 0..65535 Pause before each piece, in milliseconds (default 0)",
           "--silent Never answer (default off)",
           "--close-after-wake-up Close the connection when the wake-up has been heard (default "
           "off)",
           "--count-prints Take what is no escape command for a print, one a connection, that "
           "uses the ribbon up (default off)",
           "--job-status \"HH HH HH HH\" Job status, four hex bytes (bytes 8 to 11 of the reply) "
           "(default 00 00 00 00)",
           "--job-reply-length 0..65535 Length of the job status reply, in bytes (default 20)",
       })
    EXPECT_NE(help.find(" " + option + " "), std::string::npos) << option << " in: " << help;
  EXPECT_EQ(simulator.exit_status(), 0);
}

TEST(SimulatorCommandLine, AWrongOptionOrValueEndsWithStatusTwoAndSaysWhy)
{
  for (auto const& [options, message] : std::vector<Refused>{
           {{"--bogus"}, "The following argument was not expected: --bogus"},
           {{"extra"}, "The following argument was not expected: extra"},
           {{"--port", "65536"}, "--port: bad value \"65536\": expected 0..65535"},
           {{"--port", "http"}, "--port: bad value \"http\": expected 0..65535"},
           {{"--port="}, "--port: 1 required 0..65535 missing"},
           {{"--printers", "0"}, "--printers: bad value \"0\": expected 1..65535"},
           {{"--printers", "65536"}, "--printers: bad value \"65536\": expected 1..65535"},
           {{"--port", "65534", "--printers", "3"},
            "--printers: behind port 65534 there are not so many ports"},
           {{"--error", "06 02"}, "--error: bad value \"06 02\": expected HH HH HH"},
           {{"--error", "06", "02", "02"}, "--error: bad value \"06\": expected HH HH HH"},
           {{"--error"}, "--error: 1 required \"HH HH HH\" missing"},
           {{"--total", "65536"}, "--total: bad value \"65536\": expected 0..65535"},
           {{"--total=-1"}, "--total: bad value \"-1\": expected 0..65535"},
           {{"--remaining", "few"}, "--remaining: bad value \"few\": expected 0..65535"},
           {{"--ink-sheet", "0x84"}, "--ink-sheet: bad value \"0x84\": expected HH"},
           {{"--power", "1"}, "--power: bad value \"1\": expected HH"},
           {{"--mechanism", "20"}, "--mechanism: bad value \"20\": expected HH HH"},
           {{"--memory", "fff"}, "--memory: bad value \"fff\": expected HH"},
           {{"--asleep", "x"}, "--asleep: bad value \"x\": expected 0..65535"},
           {{"--reply-length", "70000"}, "--reply-length: bad value \"70000\": expected 0..65535"},
           {{"--fragments", "100,0"}, "--fragments: bad value \"100,0\": expected N,N,...|whole"},
           {{"--delay", "1s"}, "--delay: bad value \"1s\": expected 0..65535"},
           {{"--silent", "on"}, "The following argument was not expected: on"},
           {{"--job-status", "50 31 00"},
            "--job-status: bad value \"50 31 00\": expected HH HH HH HH"},
           {{"--job-reply-length", "a"}, "--job-reply-length: bad value \"a\": expected 0..65535"},
       }) {
    SimulatorProcess simulator(options);
    EXPECT_EQ(simulator.next_error_line(), message);
    EXPECT_EQ(simulator.rest_of_output(), "");
    EXPECT_EQ(simulator.exit_status(), 2);
  }
}

TEST(SimulatorCommandLine, APortThatIsTakenEndsWithStatusOneAndSaysWhy)
{
  SimulatorProcess first({});
  auto const port = std::to_string(first.port());
  SimulatorProcess second({"--port", port});
  EXPECT_EQ(second.next_error_line(), "cannot listen on port " + port + ": Address already in use");
  EXPECT_EQ(second.exit_status(), 1);
}

TEST(SimulatorCommandLine, AGivenPortIsUsed)
{
  std::uint16_t port = 0;
  {
    SimulatorProcess first({"--port", "0"});
    port = first.port();
    EXPECT_GT(port, 0);
  }
  SimulatorProcess second({"--port", std::to_string(port)});
  EXPECT_EQ(second.port(), port);
}

TEST(SimulatorCommandLine, EveryOptionSetsItsFieldOfTheReplies)
{
  SimulatorProcess simulator({"--error=01 02 03", "--total", "1027", "--remaining=1541",
                              "--ink-sheet=07", "--power=08", "--mechanism=09 0a", "--memory=0b",
                              "--asleep=1", "--reply-length=152", "--job-status", "0c 0d 0e 0f",
                              "--job-reply-length=12"});
  TcpPeer const peer(simulator.port());
  peer.send({0x1b, 'V', '2', '1', 0x1b, 'V', '2', '1', 0x1b, 'V', '1', '0', 0, 0});
  peer.half_close();

  Fields fields{{4, {0x0b, 0x01}},
                {128, {0x09, 0x0a}},
                {131, {0x01, 0x02, 0x03}},
                {145, {0x07}},
                {148, {0x04, 0x03, 0x06, 0x05}}};
  auto const asleep = reply_with(152, fields);
  fields[4] = {0x0b, 0x08};
  auto const job_status = reply_with(12, {{8, {0x0c, 0x0d, 0x0e, 0x0f}}});
  EXPECT_EQ(peer.receive_all(), join(join(asleep, reply_with(152, fields)), job_status));
}
