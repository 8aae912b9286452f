// How a status reply is collected: its pieces, its length, its absence.
#include <gtest/gtest.h>

#include "tests/program/woken_run.h"

namespace {

constexpr StatusReply GOOD{};

struct Row {
  std::string name;
  std::vector<Reply> replies;
  std::vector<std::string> reports;  // one for each directive
  std::string events;
};

// A query that received all of `reply`, and one whose last read had this result.
std::string reported(std::string const& reply) { return awake_text(reply) + reasons_text(); }

std::string unreported(long read_result)
{
  return no_reply_text(read_result) + unavailable_reasons_text();
}

void expect_reports(Row const& row)
{
  SCOPED_TRACE(row.name);
  std::string commands;
  std::string messages;
  int line = 0;
  for (std::string const& report : row.reports) {
    commands += "ReportStatus\n";
    messages += directive_text("ReportStatus", ++line) + report;
  }
  expect_woken_run(run_commands(commands, {.replies = row.replies}), messages, row.events);
}

TEST(Query, ReplyInEveryPairOfFragmentsIsTheSameReply)
{
  std::string const reply = GOOD.bytes();
  for (size_t cut = 1; cut < reply.size(); ++cut)
    expect_reports({"cut after " + std::to_string(cut),
                    {{{reply.substr(0, cut)}, {reply.substr(cut)}}},
                    {reported(reply)},
                    query_events(2)});
}

TEST(Query, ReplyByteByByteIsTheSameReply)
{
  Reply bytes;
  for (char byte : GOOD.bytes()) bytes.push_back({{byte}});
  expect_reports({"byte by byte", {bytes}, {reported(GOOD.bytes())}, query_events(192)});
}

TEST(Query, LongerReplyIsDumpedWhole)
{
  for (size_t length : {193U, 300U, 511U, 512U})
    expect_reports({std::to_string(length) + " bytes",
                    {{{GOOD.bytes(length)}}},
                    {reported(GOOD.bytes(length))},
                    query_events()});
}

TEST(Query, ShortReplyFailsAtTheNextReadAndIsNotDumped)
{
  for (size_t length : {1U, 20U, 152U, 191U})
    expect_reports({std::to_string(length) + " bytes",
                    {{{GOOD.bytes().substr(0, length)}, silence()}},
                    {unreported(-1)},
                    query_events(2)});
}

TEST(Query, CollectsWhatIsThereAndNoMore)
{
  std::string const reply = GOOD.bytes();
  std::string const full = GOOD.bytes(512);
  std::string const longer = GOOD.bytes(600);
  Row const rows[] = {
      {"the last fragment brings more than is needed",
       {{{longer.substr(0, 191)}, {longer.substr(191, 321)}}},
       {reported(full)},
       query_events(2)},
      {"bytes beyond the buffer belong to the next query",
       {{{full + reply.substr(0, 88)}}, {{reply.substr(88)}}},
       {reported(full), reported(reply)},
       query_events() + query_events()},
      {"the room is only what the partial reply leaves",
       {{{longer.substr(0, 100)}, {longer.substr(100)}}},
       {reported(full), unreported(-1)},
       query_events(2) + query_events()},
      {"a late reply is read by the next query",
       {{silence()}, {{reply}}},
       {unreported(-1), reported(reply)},
       query_events() + query_events()},
      {"silence of one second fails at once",
       {{silence(), {reply}}},
       {unreported(-1)},
       query_events()},
      {"the end of the back channel fails with zero",
       {{channel_end()}},
       {unreported(0)},
       query_events()},
      {"so does the end after a partial reply",
       {{{reply.substr(0, 191)}, channel_end()}},
       {unreported(0)},
       query_events(2)},
      {"a reply before the end counts", {{{reply, true}}}, {reported(reply)}, query_events()},
      {"a partial reply is not carried into the next",
       {{{std::string(100, '\xee')}, silence()}, {{reply}}},
       {unreported(-1), reported(reply)},
       query_events(2) + query_events()},
  };
  for (Row const& row : rows) expect_reports(row);
}

TEST(Query, FloodIsTakenBufferByBuffer)
{
  constexpr int FLOODED = 117;  // 512 bytes each fill most of a pipe
  expect_reports({"a flood",
                  {{{repeated(FLOODED, GOOD.bytes(512))}}},
                  std::vector(FLOODED, reported(GOOD.bytes(512))),
                  query_events() + repeated(FLOODED - 1, query_events(0))});
}

}  // namespace
