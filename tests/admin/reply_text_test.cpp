#include "admin/reply_text.h"

#include "tests/harness/same_text.h"
#include "tests/oracle/status_reply.h"

namespace {

// The line of one field.
std::string field(StatusReply const& reply, std::string const& name)
{
  std::string const text = reply_text(reply.bytes());
  std::size_t const at = text.find("    " + name + ' ');
  return at == std::string::npos ? text : text.substr(at, text.find('\n', at) - at);
}

}  // namespace

TEST(ReplyText, EveryFieldHasItsNameValueAndMeaning)
{
  EXPECT_TEXT(reply_text(StatusReply().bytes()),
              "    power_state     0x00            awake\n"
              "    mech_state      [0x00,0x00]     mechanism good\n"
              "    memory_state    0x00            memory free\n"
              "    error_info      GOOD            no error\n"
              "    ink ribbon      120 / 300       prints left of the ribbon's\n"
              "    ink_sheet_type  0x84            ribbon for 13x18(5x7\u2033)\n");
}

TEST(ReplyText, WhatIsNotGoodIsSaid)
{
  StatusReply reply;
  reply.power = 1;
  reply.mech = {0x10, 0x02};
  reply.memory = 0xff;
  EXPECT_TEXT(field(reply, "power_state"), "    power_state     0x01            not awake");
  EXPECT_TEXT(field(reply, "mech_state"), "    mech_state      [0x10,0x02]     mechanism not good");
  EXPECT_TEXT(field(reply, "memory_state"), "    memory_state    0xff            memory full");
}

TEST(ReplyText, AnErrorHasItsKeyword)
{
  StatusReply reply;
  reply.error = {6, 2, 2};
  EXPECT_TEXT(field(reply, "error_info"),
              "    error_info      0x06,0x02,0x02  com.velmo-error0001");
  reply.error = {0x11, 0x22, 0x33};
  EXPECT_TEXT(field(reply, "error_info"),
              "    error_info      0x11,0x22,0x33  a code that is not "
              "in the table, com.velmo-error0023");
  reply.remaining = 0;
  EXPECT_TEXT(field(reply, "error_info"),
              "    error_info      0xfe,0xed,0x01  no prints left, "
              "which hides the printer's own code");
}

TEST(ReplyText, CountsAndTypesThatSayNothingAreNamed)
{
  StatusReply reply;
  reply.remaining = 0xffff;
  EXPECT_TEXT(field(reply, "ink ribbon"),
              "    ink ribbon      65535 / 300     a count that is not known");
  reply.remaining = 1;
  reply.total = 0xffff;
  EXPECT_TEXT(field(reply, "ink ribbon"),
              "    ink ribbon      1 / 65535       a count that is not known");
  reply.total = 0;
  EXPECT_TEXT(field(reply, "ink ribbon"),
              "    ink ribbon      1 / 0           no capacity, so no ribbon");
  reply.ink_sheet = 0xff;
  EXPECT_TEXT(field(reply, "ink_sheet_type"), "    ink_sheet_type  0xff            type not known");
}
