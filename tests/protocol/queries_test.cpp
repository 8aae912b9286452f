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

TEST_P(EitherQuery, ReadingEndsWithTheMinimumAndAllThatCameIsDumped)
{
  std::size_t const minimum = GetParam().minimum_reply;
  for (std::size_t length : {minimum, minimum + 1, std::size_t{300}, std::size_t{512}})
    expect_as_told(GetParam(), {.reads = {{Query::reply(length)}, {"not read"}}}, Ending::Reply);
}

TEST_P(EitherQuery, AShortWriteOrAFailedFlushFailsAtOnce)
{
  for (std::size_t written = 0; written < GetParam().command_size; ++written)
    expect_as_told(GetParam(), {.writes = {written}}, Ending::Failure);
  expect_as_told(GetParam(), {.flushes = {-1}}, Ending::Failure);
}

TEST_P(EitherQuery, AfterAFailedDrainTheReplyIsReadAllTheSame)
{
  Query const& query = GetParam();
  for (int status : {0, 3, 7, 8, 255, -1})
    expect_as_told(query, {.drains = {status}, .reads = {{query.reply()}}, .drain_data = "ignored"},
                   Ending::Reply);
}

TEST_P(EitherQuery, AReadThatBringsNothingFailsAndNothingIsDumped)
{
  std::string const one_byte_short = Query::reply(GetParam().minimum_reply - 1);
  for (ssize_t result : {0, -1, -2}) {
    expect_as_told(GetParam(), {.reads = {{"", result}, {"not read"}}}, Ending::Failure);
    expect_as_told(GetParam(), {.reads = {{one_byte_short}, {"", result}, {"not read"}}},
                   Ending::Failure);
  }
}

TEST_P(EitherQuery, AReplyInTwoPiecesIsPutTogetherWhereverItIsCut)
{
  std::size_t const minimum = GetParam().minimum_reply;
  for (std::string const& reply : {Query::reply(minimum), Query::reply(minimum + 9)}) {
    for (std::size_t cut = 1; cut < minimum && !HasFatalFailure(); ++cut) {
      SCOPED_TRACE(cut);
      expect_as_told(GetParam(), {.reads = {{reply.substr(0, cut)}, {reply.substr(cut)}}},
                     Ending::Reply);
    }
  }
}

TEST_P(EitherQuery, AReplyThatArrivesByteByByteIsPutTogether)
{
  Script script;
  for (char byte : GetParam().reply()) script.reads.push_back({std::string(1, byte)});
  expect_as_told(GetParam(), script, Ending::Reply);
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

}  // namespace
