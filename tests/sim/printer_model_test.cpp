// The replies of the simulated printer, byte by byte.
#include "sim/printer_model.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <vector>

#include "tests/sim/reply_bytes.h"

using sim::cut;
using sim::PrinterModel;

TEST(StatusReply, OfAGoodPrinterHasTheDefaults)
{
  PrinterModel printer;
  EXPECT_EQ(status_reply(printer), status_with({}));
}

TEST(StatusReply, EveryFieldStandsAtItsOffset)
{
  PrinterModel printer;
  printer.memory = 0x11;
  printer.power = 0x22;
  printer.mechanism = {0x33, 0x44};
  printer.error = {0x55, 0x66, 0x77};
  printer.ink_sheet = 0x88;
  printer.total = 0x99aa;
  printer.remaining = 0xbbcc;
  EXPECT_EQ(status_reply(printer), reply_with(192, {{4, {0x11, 0x22}},
                                                    {128, {0x33, 0x44}},
                                                    {131, {0x55, 0x66, 0x77}},
                                                    {145, {0x88}},
                                                    {148, {0x99, 0xaa, 0xbb, 0xcc}}}));
}

TEST(StatusReply, SaysNotAwakeAsOftenAsToldAndThenThePowerState)
{
  PrinterModel printer;
  printer.power = 0x07;
  printer.asleep = 2;
  EXPECT_EQ(status_reply(printer)[5], 0x01);
  EXPECT_EQ(status_reply(printer)[5], 0x01);
  EXPECT_EQ(status_reply(printer)[5], 0x07);
  EXPECT_EQ(status_reply(printer)[5], 0x07);
}

TEST(StatusReply, TellsAllOtherFieldsWhileAsleep)
{
  PrinterModel printer;
  printer.asleep = 1;
  printer.error = {0x06, 0x02, 0x02};
  EXPECT_EQ(status_reply(printer), status_with({{5, {0x01}}, {131, {0x06, 0x02, 0x02}}}));
}

TEST(StatusReply, IsCutOrFilledWithZerosToItsLength)
{
  PrinterModel printer;
  auto const whole = status_reply(printer);
  for (auto const length :
       std::vector<std::size_t>{0, 1, 150, 151, 152, 191, 192, 193, 512, 65535}) {
    printer.reply_length = static_cast<std::uint16_t>(length);
    auto expected = whole;
    expected.resize(length, 0x00);
    EXPECT_EQ(status_reply(printer), expected) << length;
  }
}

TEST(JobStatusReply, OfAGoodPrinterIsTwentyZeros)
{
  EXPECT_EQ(job_status_reply(PrinterModel()), Bytes(20));
}

TEST(JobStatusReply, TheStatusBytesStandAtOffsetsEightToEleven)
{
  PrinterModel printer;
  printer.job_status = {0x50, 0x31, 0x02, 0xff};
  EXPECT_EQ(job_status_reply(printer), reply_with(20, {{8, {0x50, 0x31, 0x02, 0xff}}}));
}

TEST(JobStatusReply, IsCutOrFilledWithZerosToItsLength)
{
  PrinterModel printer;
  printer.job_status = {0x50, 0x31, 0x02, 0xff};
  printer.job_reply_length = 10;
  EXPECT_EQ(job_status_reply(printer), reply_with(10, {{8, {0x50, 0x31}}}));
  printer.job_reply_length = 65535;
  EXPECT_EQ(job_status_reply(printer), reply_with(65535, {{8, {0x50, 0x31, 0x02, 0xff}}}));
}

TEST(Cut, WithoutSizesIsOnePiece)
{
  EXPECT_EQ(cut({1, 2, 3}, {}), (std::vector<Bytes>{{1, 2, 3}}));
}

TEST(Cut, TheRestIsTheLastPiece)
{
  EXPECT_EQ(cut({1, 2, 3, 4, 5, 6}, {1, 2}), (std::vector<Bytes>{{1}, {2, 3}, {4, 5, 6}}));
}

TEST(Cut, SizesThatAreUsedUpExactlyLeaveNoEmptyPiece)
{
  EXPECT_EQ(cut({1, 2, 3}, {1, 2}), (std::vector<Bytes>{{1}, {2, 3}}));
}

TEST(Cut, SizesBeyondTheReplyAreCutShort)
{
  EXPECT_EQ(cut({1, 2, 3}, {2, 65535, 1}), (std::vector<Bytes>{{1, 2}, {3}}));
}

TEST(Cut, OfNothingIsNoPiece) { EXPECT_TRUE(cut({}, {1, 2}).empty()); }
