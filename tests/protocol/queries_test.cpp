// The queries from their command to the parsed reply, in every order of events.
#include "protocol/queries.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/harness/fake_world.h"
#include "tests/harness/same_text.h"
#include "tests/oracle/exchange_calls.h"
#include "tests/oracle/run_text.h"

namespace {

std::string const UNAVAILABLE = "UNAVAILABLE";

// The two uses of the exchange that wait for a reply share these tests.
struct Query {
  char const* name;
  std::string command;
  std::size_t minimum_reply;
  std::string (*ask)();  // the result's text

  [[nodiscard]] std::string start() const
  {
    return command_start_text(name, command) + write_call(command);
  }
  [[nodiscard]] std::string end() const { return end_text(name); }
  [[nodiscard]] std::string up_to_the_drain() const { return start() + FLUSH_CALL + DRAIN_CALL; }
  // A reply that both parsers read, with a different byte at each offset.
  [[nodiscard]] std::string reply(std::size_t length) const
  {
    std::string bytes(length, '\0');
    for (std::size_t i = 0; i < length; i++) bytes[i] = static_cast<char>(0x40 + i % 191);
    return bytes;
  }
};

Query const QUERIES[] = {
    {"get_printer_info", "\033V21", 192, [] { return get_printer_info().to_string(); }},
    {"get_job_status", {"\033V10\0\0", 6}, 20, [] { return get_job_status().to_string(); }},
};

void PrintTo(Query const& query, std::ostream* out) { *out << query.name; }

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
  EXPECT_TEXT(world.transcript(),
              query.up_to_the_drain() + read_call(512) + dump_text("[STS]", reply) + query.end());
}

TEST_P(EitherQuery, AShortWriteFailsBeforeTheFlush)
{
  Query const& query = GetParam();
  for (std::size_t written = 0; written < query.command.size(); written++) {
    FakeWorld world;
    world.fwrite_results = {written};
    EXPECT_EQ(query.ask(), UNAVAILABLE);
    EXPECT_TEXT(world.transcript(),
                query.start() + failed_write_text(static_cast<long>(written)) + query.end());
  }
}

TEST_P(EitherQuery, AFailedFlushFailsBeforeTheDrain)
{
  Query const& query = GetParam();
  FakeWorld world;
  world.fflush_results = {-1};
  EXPECT_EQ(query.ask(), UNAVAILABLE);
  EXPECT_TEXT(world.transcript(), query.start() + FLUSH_CALL + failed_flush_text() + query.end());
}

TEST_P(EitherQuery, AfterAFailedDrainTheReplyIsReadAllTheSame)
{
  Query const& query = GetParam();
  for (int status : {0, 3, 7, 8, 255, -1}) {
    FakeWorld world;
    std::string const reply = query.reply(query.minimum_reply);
    world.drain_statuses = {status};
    world.drain_data = "ignored";
    world.reads = {{reply}};
    EXPECT_NE(query.ask(), UNAVAILABLE);
    EXPECT_TEXT(world.transcript(), query.up_to_the_drain()
                                        + failed_drain_text(side_channel_status_text(status))
                                        + read_call(512) + dump_text("[STS]", reply) + query.end());
  }
}

TEST_P(EitherQuery, AFirstReadThatBringsNothingFails)
{
  Query const& query = GetParam();
  for (ssize_t result : {0, -1, -2}) {
    FakeWorld world;
    world.reads = {{"", result}};
    EXPECT_EQ(query.ask(), UNAVAILABLE);
    EXPECT_TEXT(world.transcript(),
                query.up_to_the_drain() + read_call(512) + failed_read_text(result) + query.end());
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
    EXPECT_TEXT(world.transcript(), query.up_to_the_drain() + read_call(512)
                                        + read_call(512 - length) + failed_read_text(result)
                                        + query.end());
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
    ASSERT_TEXT(world.transcript(), query.up_to_the_drain() + read_call(512) + read_call(512 - cut)
                                        + dump_text("[STS]", reply) + query.end());
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
  EXPECT_TEXT(world.transcript(),
              query.up_to_the_drain() + calls + dump_text("[STS]", reply) + query.end());
}

TEST_P(EitherQuery, EveryByteOfALongReplyIsDumped)
{
  Query const& query = GetParam();
  for (std::size_t length : {query.minimum_reply + 1, std::size_t{300}, std::size_t{512}}) {
    FakeWorld world;
    std::string const reply = query.reply(length);
    world.reads = {{reply}};
    EXPECT_NE(query.ask(), UNAVAILABLE);
    EXPECT_TEXT(world.transcript(),
                query.up_to_the_drain() + read_call(512) + dump_text("[STS]", reply) + query.end());
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
  EXPECT_TEXT(world.transcript(), query.up_to_the_drain() + read_call(512) + read_call(512 - cut)
                                      + dump_text("[STS]", reply) + query.end());
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
  EXPECT_TEXT(world.transcript(),
              query.up_to_the_drain() + read_call(512) + dump_text("[STS]", reply) + query.end());
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
  std::string const reply = StatusReply{.power = 1}.bytes();
  world.reads = {{reply}};
  EXPECT_EQ(get_printer_info().to_string(),
            "power_state=0x01 mech_state=[0x00,0x00] memory_state=0x00 error_info=[GOOD] "
            "levels=[ink ribbon 120 / 300 ink_sheet_type=0x84]");
  EXPECT_TEXT(world.transcript(), status_query_with_calls(reply));
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
