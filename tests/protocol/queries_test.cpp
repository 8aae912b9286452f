// The queries from their command to the parsed reply, in every order of events.
#include "protocol/queries.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

#include "tests/harness/same_text.h"
#include "tests/oracle/status_reply.h"
#include "tests/oracle/told_world.h"

namespace {

using Script = FakeScript;

// The two uses of the exchange that wait for a reply share these tests.
struct Query {
  char const* name;
  std::size_t command_size;
  std::size_t minimum_reply;
  std::string (*ask)();  // the result's text
  std::optional<std::string> (*tell)(Surroundings const&);
  std::string (*text)(std::string const& reply);

  // A reply that both parsers read, with a different byte at each offset.
  [[nodiscard]] static std::string reply(std::size_t length)
  {
    std::string bytes(length, '\0');
    for (std::size_t i = 0; i < length; ++i) bytes[i] = static_cast<char>(0x40 + i % 191);
    return bytes;
  }
  [[nodiscard]] std::string reply() const { return reply(minimum_reply); }
};

Query const QUERIES[] = {
    {"get_printer_info", 4, 192, [] { return get_printer_info().to_string(); }, tell_printer_status,
     [](std::string const& reply) { return read_status(reply).info_text(); }},
    {"get_job_status", 6, 20, [] { return get_job_status().to_string(); }, tell_job_status,
     [](std::string const& reply) { return job_text(reply); }},
};

enum class Ending { Reply, Failure };

// Calls, messages and result are as told, and the reading ends so.
void expect_as_told(Query const& query, Script const& script, Ending ending)
{
  std::optional<std::string> reply;
  std::string const transcript =
      told(script, [&](Surroundings const& outside) { reply = query.tell(outside); });
  ASSERT_EQ(reply.has_value(), ending == Ending::Reply);
  FakeWorld world(script);
  ASSERT_TEXT(query.ask(), reply ? query.text(*reply) : "UNAVAILABLE");
  ASSERT_TEXT(world.transcript(), transcript);
}

void PrintTo(Query const& query, std::ostream* out) { *out << query.name; }

class EitherQuery : public testing::TestWithParam<Query> {};

INSTANTIATE_TEST_SUITE_P(Queries, EitherQuery, testing::ValuesIn(QUERIES),
                         [](auto const& param) { return param.param.name; });

TEST_P(EitherQuery, AReplyOfTheMinimumEndsTheReading)
{
  Query const& query = GetParam();
  expect_as_told(query, {.reads = {{query.reply()}, {"not read"}}}, Ending::Reply);
}

TEST_P(EitherQuery, AShortWriteFailsBeforeTheFlush)
{
  for (std::size_t written = 0; written < GetParam().command_size; ++written)
    expect_as_told(GetParam(), {.writes = {written}}, Ending::Failure);
}

TEST_P(EitherQuery, AFailedFlushFailsBeforeTheDrain)
{
  expect_as_told(GetParam(), {.flushes = {-1}}, Ending::Failure);
}

TEST_P(EitherQuery, AfterAFailedDrainTheReplyIsReadAllTheSame)
{
  Query const& query = GetParam();
  for (int status : {0, 3, 7, 8, 255, -1})
    expect_as_told(query, {.drains = {status}, .reads = {{query.reply()}}, .drain_data = "ignored"},
                   Ending::Reply);
}

TEST_P(EitherQuery, AFirstReadThatBringsNothingFails)
{
  for (ssize_t result : {0, -1, -2})
    expect_as_told(GetParam(), {.reads = {{"", result}}}, Ending::Failure);
}

TEST_P(EitherQuery, AReplyOneByteShortFailsAndIsNotDumped)
{
  Query const& query = GetParam();
  for (ssize_t result : {0, -1})
    expect_as_told(query,
                   {.reads = {{Query::reply(query.minimum_reply - 1)}, {"", result}, {"not read"}}},
                   Ending::Failure);
}

TEST_P(EitherQuery, AReplyInTwoPiecesIsPutTogetherWhereverItIsCut)
{
  Query const& query = GetParam();
  std::string const reply = query.reply();
  for (std::size_t cut = 1; cut < reply.size() && !HasFatalFailure(); ++cut) {
    SCOPED_TRACE(cut);
    expect_as_told(query, {.reads = {{reply.substr(0, cut)}, {reply.substr(cut)}}}, Ending::Reply);
  }
}

TEST_P(EitherQuery, AReplyThatArrivesByteByByteIsPutTogether)
{
  Script script;
  for (char byte : GetParam().reply()) script.reads.push_back({std::string(1, byte)});
  expect_as_told(GetParam(), script, Ending::Reply);
}

TEST_P(EitherQuery, EveryByteOfALongReplyIsDumped)
{
  for (std::size_t length : {GetParam().minimum_reply + 1, std::size_t{300}, std::size_t{512}})
    expect_as_told(GetParam(), {.reads = {{Query::reply(length)}}}, Ending::Reply);
}

TEST_P(EitherQuery, ALastPieceBeyondTheMinimumIsKept)
{
  Query const& query = GetParam();
  std::string const reply = Query::reply(query.minimum_reply + 9);
  std::size_t const cut = query.minimum_reply - 1;
  expect_as_told(query, {.reads = {{reply.substr(0, cut)}, {reply.substr(cut)}}}, Ending::Reply);
}

TEST_P(EitherQuery, NothingOfACutReplyReachesTheNextQuery)
{
  Query const& query = GetParam();
  FakeWorld world({.reads = {{std::string(query.minimum_reply - 1, '\xee')}, {"", 0}}});
  EXPECT_EQ(query.ask(), "UNAVAILABLE");
  expect_as_told(query, {.reads = {{query.reply()}}}, Ending::Reply);
}

TEST_P(EitherQuery, EveryWriteIsWholeLines)
{
  Query const& query = GetParam();
  FakeWorld world({.drains = {3, 3}, .reads = {{query.reply()}, {"", -1}}});
  StderrWrites capture;
  query.ask();
  query.ask();
  for (std::string const& text : capture.take()) EXPECT_TRUE(text.ends_with("\n")) << text;
}

TEST(GetPrinterInfo, ThreeHundredBytesAreParsedAtTheirFixedOffsets)
{
  FakeWorld world({.reads = {{StatusReply{.error = {6, 2, 2}}.bytes(300)}}});
  unsigned char const code[3] = {6, 2, 2};
  EXPECT_TRUE(get_printer_info().GetPrinterState() == &code);
}

TEST(GetJobStatus, ParsesTheReply)
{
  FakeWorld world({.reads = {{job_status_reply({0x50, 0x31, 0x00, 0xff})}}});
  JobStatus const status = get_job_status();
  EXPECT_TRUE(status.isAvailable());
  EXPECT_TRUE(status.isReady());
  EXPECT_EQ(status.to_string(), "0x50,0x31,0x00,0xff");
}

}  // namespace
