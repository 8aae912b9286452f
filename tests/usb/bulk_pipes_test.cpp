// When the simulated printer's bulk endpoints end a host's transfer, and with what.
#include "sim/usb/bulk_pipes.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>

using sim::BulkPipes;
using sim::Bytes;
using sim::Stall;
using sim::Transfer;

namespace {

int const HOST = 0;
int const OTHER_HOST = 0;

Transfer reading(std::size_t room, std::uint64_t address = 1, void const* host = &HOST)
{
  Transfer transfer;
  transfer.client = host;
  transfer.address = address;
  transfer.length = room;
  return transfer;
}

Transfer writing(Bytes const& bytes, std::uint64_t address = 1)
{
  Transfer transfer = reading(bytes.size(), address);
  transfer.bytes = bytes;
  return transfer;
}

void nobody(Bytes const&) {}

// The endpoints of a printer whose packets have 64 bytes.
struct Pipes : BulkPipes {
  Pipes() : BulkPipes(64, nobody, nobody) {}

  void expect_done(int status, std::size_t size)
  {
    auto const transfer = take_done(&HOST);
    ASSERT_TRUE(transfer);
    EXPECT_EQ(transfer->status, status);
    EXPECT_EQ(transfer->bytes.size(), size);
  }
};

}  // namespace

TEST(BulkPipes, APacketThatIsNotFullEndsARead)
{
  Pipes pipes;
  pipes.receive(reading(512));
  pipes.answer(Bytes(100));
  pipes.expect_done(0, 100);
}

TEST(BulkPipes, FullPacketsDoNotEndAReadWithRoomForMore)
{
  Pipes pipes;
  pipes.receive(reading(512));
  pipes.answer(Bytes(192));
  EXPECT_FALSE(pipes.has_done());
  pipes.answer(Bytes());
  pipes.expect_done(0, 192);
}

TEST(BulkPipes, AnEmptyPacketEndsAnAnswerOfFullPacketsWhenTold)
{
  Pipes pipes;
  pipes.use_zero_length_packets(true);
  pipes.answer(Bytes(192));
  pipes.answer(Bytes(100));
  for (std::size_t const size : {192U, 100U}) {
    pipes.receive(reading(512));
    pipes.expect_done(0, size);
  }
  EXPECT_FALSE(pipes.has_done());
}

TEST(BulkPipes, AReadWithoutRoomForMoreEnds)
{
  Pipes pipes;
  pipes.answer(Bytes(192));
  pipes.receive(reading(128));
  pipes.expect_done(0, 128);
  pipes.receive(reading(65));
  EXPECT_FALSE(pipes.has_done());
}

TEST(BulkPipes, AReadWithoutRoomForAPacketOverflows)
{
  Pipes pipes;
  pipes.answer(Bytes(64));
  pipes.receive(reading(63));
  pipes.expect_done(-EOVERFLOW, 0);
}

TEST(BulkPipes, StallsOnceOrUntilItIsOver)
{
  for (auto const stall : {Stall::Once, Stall::On}) {
    Pipes pipes;
    pipes.stall_in(stall);
    pipes.stall_out(stall);
    pipes.send(writing({1}));
    pipes.expect_done(-EPIPE, 1);
    pipes.receive(reading(64));
    pipes.expect_done(-EPIPE, 0);
    pipes.answer(Bytes(1));
    pipes.receive(reading(64));
    pipes.expect_done(stall == Stall::Once ? 0 : -EPIPE, stall == Stall::Once ? 1 : 0);
    pipes.send(writing({1}));
    pipes.expect_done(stall == Stall::Once ? 0 : -EPIPE, 1);
  }
}

TEST(BulkPipes, WhatIsRefusedWaitsAndIsThenHeardInOrder)
{
  Bytes coming;
  Bytes heard;
  auto const into = [](Bytes& all) {
    return [&all](Bytes const& bytes) { all.insert(all.end(), bytes.begin(), bytes.end()); };
  };
  BulkPipes pipes(64, into(coming), into(heard));
  pipes.refuse_out(true);
  pipes.send(writing({1}));
  pipes.send(writing({2}));
  EXPECT_FALSE(pipes.has_done());
  EXPECT_EQ(coming, (Bytes{1, 2}));
  EXPECT_EQ(heard, Bytes());
  pipes.refuse_out(false);
  EXPECT_EQ(heard, (Bytes{1, 2}));
}

TEST(BulkPipes, EndsOneTransferOfOneHost)
{
  Pipes pipes;
  pipes.receive(reading(64, 1));
  pipes.receive(reading(64, 2));
  pipes.receive(reading(64, 2, &OTHER_HOST));
  EXPECT_FALSE(pipes.end(&HOST, 3, ENOENT));
  EXPECT_TRUE(pipes.end(&HOST, 2, ENOENT));
  pipes.expect_done(-ENOENT, 0);
  EXPECT_FALSE(pipes.has_done());
  pipes.end_all(&HOST, ESHUTDOWN);
  pipes.expect_done(-ESHUTDOWN, 0);
  EXPECT_FALSE(pipes.has_done());
}

TEST(BulkPipes, ForgetsAHostWithAllThatItWaitsFor)
{
  Pipes pipes;
  pipes.receive(reading(64, 1));
  pipes.receive(reading(64, 2, &OTHER_HOST));
  pipes.finish(reading(0, 3));
  pipes.forget(&HOST);
  EXPECT_FALSE(pipes.has_done());
  pipes.answer(Bytes(5));
  EXPECT_FALSE(pipes.take_done(&HOST));
  EXPECT_TRUE(pipes.take_done(&OTHER_HOST));
}

TEST(BulkPipes, ForgetsItsAnswersWhenThePlugIsPulled)
{
  Pipes pipes;
  pipes.answer(Bytes(5));
  pipes.forget_answers();
  pipes.receive(reading(64));
  EXPECT_FALSE(pipes.has_done());
}
