// The queries from their command to the parsed reply, in every order of events.
#include "protocol/queries.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>

#include "tests/oracle/expected_texts.h"
#include "tests/harness/fake_world.h"
#include "tests/oracle/replies.h"

namespace {

std::string const UNAVAILABLE = "UNAVAILABLE";

std::string read_call(std::size_t room)
{
  return "> cupsBackChannelRead(room for " + std::to_string(room) + ", 1.000 s)\n";
}

// The three uses of the exchange that wait for a reply share these tests.
struct Query {
  char const* name;
  char const* dump_and_write;  // the command, dumped and written
  std::size_t command_length;
  std::size_t minimum_reply;
  std::string (*ask)();  // the result's text

  [[nodiscard]] std::string start() const
  {
    return "DEBUG: " + std::string(name) + "() START\n" + dump_and_write;
  }
  [[nodiscard]] std::string end() const { return "DEBUG: " + std::string(name) + "() END\n"; }
  [[nodiscard]] std::string up_to_the_drain() const
  {
    return start() + "> fflush(stdout)\n> cupsSideChannelDoRequest(2, room for 512, 5.000 s)\n";
  }
  // A reply that both parsers read, with a different byte at each offset.
  [[nodiscard]] std::string reply(std::size_t length) const
  {
    std::string bytes(length, '\0');
    for (std::size_t i = 0; i < length; i++) bytes[i] = static_cast<char>(0x40 + i % 191);
    return bytes;
  }
};

Query const QUERIES[] = {
    {"get_printer_info",
     "DEBUG: [CMD] size=4\n"
     "DEBUG: [CMD] 0000: 1b 56 32 31\n"
     "> fwrite(1 x 4: 1b 56 32 31)\n",
     4, 192, [] { return get_printer_info().to_string(); }},
    {"get_job_status",
     "DEBUG: [CMD] size=6\n"
     "DEBUG: [CMD] 0000: 1b 56 31 30 00 00\n"
     "> fwrite(1 x 6: 1b 56 31 30 00 00)\n",
     6, 20, [] { return get_job_status().to_string(); }},
};

class EitherQuery : public testing::TestWithParam<Query> {};

INSTANTIATE_TEST_SUITE_P(Queries, EitherQuery, testing::ValuesIn(QUERIES),
                         [](auto const& param) { return param.param.name; });

TEST_P(EitherQuery, AReplyOfTheMinimumEndsTheReading)
{
  Query const& query = GetParam();
  FakeWorld world;
  std::string const reply = query.reply(query.minimum_reply);
  world.reads = {{reply}, {"not read"}};
  EXPECT_NE(query.ask(), UNAVAILABLE);
  EXPECT_EQ(world.transcript(),
            query.up_to_the_drain() + read_call(512) + expected_dump("[STS]", reply) + query.end());
}

TEST_P(EitherQuery, AShortWriteFailsBeforeTheFlush)
{
  Query const& query = GetParam();
  for (std::size_t written = 0; written < query.command_length; written++) {
    FakeWorld world;
    world.fwrite_results = {written};
    EXPECT_EQ(query.ask(), UNAVAILABLE);
    EXPECT_EQ(world.transcript(), query.start() + "DEBUG: fwrite() failed. ret="
                                      + std::to_string(written) + "\n" + query.end());
  }
}

TEST_P(EitherQuery, AFailedFlushFailsBeforeTheDrain)
{
  Query const& query = GetParam();
  FakeWorld world;
  world.fflush_results = {-1};
  EXPECT_EQ(query.ask(), UNAVAILABLE);
  EXPECT_EQ(world.transcript(), query.start()
                                    + "> fflush(stdout)\n"
                                      "DEBUG: fflush() failed.\n"
                                    + query.end());
}

TEST_P(EitherQuery, AfterAFailedDrainTheReplyIsReadAllTheSame)
{
  Query const& query = GetParam();
  std::pair<int, char const*> const statuses[] = {
      {0, "CUPS_SC_STATUS_NONE(0)"},
      {3, "CUPS_SC_STATUS_TIMEOUT(3)"},
      {7, "CUPS_SC_STATUS_NOT_IMPLEMENTED(7)"},
      {8, "UNKNOWN(8)"},
      {255, "UNKNOWN(255)"},
      {-1, "UNKNOWN(-1)"},
  };
  for (auto const& [status, text] : statuses) {
    FakeWorld world;
    std::string const reply = query.reply(query.minimum_reply);
    world.drain_statuses = {status};
    world.drain_data = "ignored";
    world.reads = {{reply}};
    EXPECT_NE(query.ask(), UNAVAILABLE);
    EXPECT_EQ(world.transcript(),
              query.up_to_the_drain() + "DEBUG: CUPS_SC_CMD_DRAIN_OUTPUT=" + text + "\n"
                  + read_call(512) + expected_dump("[STS]", reply) + query.end());
  }
}

TEST_P(EitherQuery, AFirstReadThatBringsNothingFails)
{
  Query const& query = GetParam();
  for (ssize_t result : {0, -1, -2}) {
    FakeWorld world;
    world.reads = {{"", result}};
    EXPECT_EQ(query.ask(), UNAVAILABLE);
    EXPECT_EQ(world.transcript(), query.up_to_the_drain() + read_call(512)
                                      + "DEBUG: cupsBackChannelRead() failed. ret="
                                      + std::to_string(result) + "\n" + query.end());
  }
}

TEST_P(EitherQuery, AReplyOneByteShortFailsAndIsNotDumped)
{
  Query const& query = GetParam();
  std::size_t const length = query.minimum_reply - 1;
  for (ssize_t result : {0, -1}) {
    FakeWorld world;
    world.reads = {{query.reply(length)}, {"", result}, {"not read"}};
    EXPECT_EQ(query.ask(), UNAVAILABLE);
    EXPECT_EQ(world.transcript(), query.up_to_the_drain() + read_call(512) + read_call(512 - length)
                                      + "DEBUG: cupsBackChannelRead() failed. ret="
                                      + std::to_string(result) + "\n" + query.end());
  }
}

TEST_P(EitherQuery, AReplyInTwoPiecesIsPutTogetherWhereverItIsCut)
{
  Query const& query = GetParam();
  std::string const reply = query.reply(query.minimum_reply);
  FakeWorld world;
  world.reads = {{reply}};
  std::string const whole = query.ask();
  world.transcript();
  for (std::size_t cut = 1; cut < reply.size(); cut++) {
    world.reads = {{reply.substr(0, cut)}, {reply.substr(cut)}};
    ASSERT_EQ(query.ask(), whole) << cut;
    ASSERT_EQ(world.transcript(), query.up_to_the_drain() + read_call(512) + read_call(512 - cut)
                                      + expected_dump("[STS]", reply) + query.end());
  }
}

TEST_P(EitherQuery, AReplyThatArrivesByteByByteIsPutTogether)
{
  Query const& query = GetParam();
  std::string const reply = query.reply(query.minimum_reply);
  FakeWorld world;
  world.reads = {{reply}};
  std::string const whole = query.ask();
  world.transcript();
  std::string calls;
  for (std::size_t i = 0; i < reply.size(); i++) {
    world.reads.push_back({reply.substr(i, 1)});
    calls += read_call(512 - i);
  }
  EXPECT_EQ(query.ask(), whole);
  EXPECT_EQ(world.transcript(),
            query.up_to_the_drain() + calls + expected_dump("[STS]", reply) + query.end());
}

TEST_P(EitherQuery, EveryByteOfALongReplyIsDumped)
{
  Query const& query = GetParam();
  for (std::size_t length : {query.minimum_reply + 1, std::size_t{300}, std::size_t{512}}) {
    FakeWorld world;
    std::string const reply = query.reply(length);
    world.reads = {{reply}};
    EXPECT_NE(query.ask(), UNAVAILABLE);
    EXPECT_EQ(world.transcript(), query.up_to_the_drain() + read_call(512)
                                      + expected_dump("[STS]", reply) + query.end());
  }
}

TEST_P(EitherQuery, ALastPieceBeyondTheMinimumIsKept)
{
  Query const& query = GetParam();
  FakeWorld world;
  std::string const reply = query.reply(query.minimum_reply + 9);
  std::size_t const cut = query.minimum_reply - 1;
  world.reads = {{reply.substr(0, cut)}, {reply.substr(cut)}};
  EXPECT_NE(query.ask(), UNAVAILABLE);
  EXPECT_EQ(world.transcript(), query.up_to_the_drain() + read_call(512) + read_call(512 - cut)
                                    + expected_dump("[STS]", reply) + query.end());
}

TEST_P(EitherQuery, NothingOfACutReplyReachesTheNextQuery)
{
  Query const& query = GetParam();
  FakeWorld world;
  std::string const reply = query.reply(query.minimum_reply);
  world.reads = {{reply}, {std::string(query.minimum_reply - 1, '\xee')}, {"", 0}, {reply}};
  std::string const whole = query.ask();
  EXPECT_EQ(query.ask(), UNAVAILABLE);
  world.transcript();
  EXPECT_EQ(query.ask(), whole);
  EXPECT_EQ(world.transcript(),
            query.up_to_the_drain() + read_call(512) + expected_dump("[STS]", reply) + query.end());
}

TEST_P(EitherQuery, EveryWriteIsWholeLines)
{
  Query const& query = GetParam();
  FakeWorld world;
  world.drain_statuses = {3, 3};
  world.reads = {{query.reply(query.minimum_reply)}, {"", -1}};
  StderrWrites capture;
  query.ask();
  query.ask();
  for (std::string const& text : capture.take()) EXPECT_TRUE(text.ends_with("\n")) << text;
}

TEST(GetPrinterInfo, ParsesTheReply)
{
  FakeWorld world;
  std::string const reply = StatusReply{.power_state = 1, .total = 300, .remaining = 120}.bytes();
  world.reads = {{reply}};
  EXPECT_EQ(get_printer_info().to_string(),
            "power_state=0x01 mech_state=[0x00,0x00] memory_state=0x00 error_info=[GOOD] "
            "levels=[ink ribbon 120 / 300 ink_sheet_type=0x84]");
  EXPECT_EQ(world.transcript(), expected_status_query(reply));
}

TEST(GetPrinterInfo, ThreeHundredBytesAreParsedAtTheirFixedOffsets)
{
  FakeWorld world;
  world.reads = {{StatusReply{.error = {6, 2, 2}}.bytes(300)}};
  unsigned char const code[3] = {6, 2, 2};
  EXPECT_TRUE(get_printer_info().GetPrinterState() == &code);
}

TEST(GetJobStatus, ParsesTheReply)
{
  FakeWorld world;
  world.reads = {{job_status_reply({0x50, 0x31, 0x00, 0xff})}};
  JobStatus const status = get_job_status();
  EXPECT_TRUE(status.isAvailable());
  EXPECT_TRUE(status.isReady());
  EXPECT_EQ(status.to_string(), "0x50,0x31,0x00,0xff");
}

}  // namespace
