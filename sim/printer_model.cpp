// The simulated printer: its state, and the replies in which it tells that state.
#include "sim/printer_model.h"

#include <algorithm>
#include <cstddef>

namespace sim {

namespace {

// Offsets in the status reply.
constexpr std::size_t MEMORY = 4;
constexpr std::size_t POWER = 5;
constexpr std::size_t MECHANISM = 128;
constexpr std::size_t ERROR = 131;
constexpr std::size_t INK_SHEET = 145;
constexpr std::size_t TOTAL = 148;
constexpr std::size_t REMAINING = 150;
constexpr std::size_t STATUS_FIELDS_END = 152;

// Offsets in the job status reply.
constexpr std::size_t JOB_STATUS = 8;
constexpr std::size_t JOB_FIELDS_END = 12;

constexpr std::uint8_t NOT_AWAKE = 0x01;

template <std::size_t N>
void put(Bytes& reply, std::size_t offset, std::array<std::uint8_t, N> const& bytes)
{
  for (std::size_t i = 0; i < N; ++i) reply[offset + i] = bytes[i];
}

void put_big_endian(Bytes& reply, std::size_t offset, std::uint16_t value)
{
  reply[offset] = static_cast<std::uint8_t>(value >> 8);
  reply[offset + 1] = static_cast<std::uint8_t>(value & 0xff);
}

}  // namespace

Bytes status_reply(PrinterModel& printer)
{
  Bytes reply(STATUS_FIELDS_END);
  reply[MEMORY] = printer.memory;
  reply[POWER] = printer.asleep > 0 ? NOT_AWAKE : printer.power;
  put(reply, MECHANISM, printer.mechanism);
  put(reply, ERROR, printer.error);
  reply[INK_SHEET] = printer.ink_sheet;
  put_big_endian(reply, TOTAL, printer.total);
  put_big_endian(reply, REMAINING, printer.remaining);
  reply.resize(printer.reply_length);

  if (printer.asleep > 0) --printer.asleep;
  return reply;
}

void use_up_print(PrinterModel& printer)
{
  if (printer.remaining > 0) --printer.remaining;
}

Bytes job_status_reply(PrinterModel const& printer)
{
  Bytes reply(JOB_FIELDS_END);
  put(reply, JOB_STATUS, printer.job_status);
  reply.resize(printer.job_reply_length);
  return reply;
}

std::vector<Bytes> cut(Bytes const& reply, std::vector<std::uint16_t> const& sizes)
{
  std::vector<Bytes> pieces;
  auto start = reply.begin();
  auto const take = [&](std::ptrdiff_t size) {
    auto const end = start + std::min(size, reply.end() - start);
    if (start != end) pieces.emplace_back(start, end);
    start = end;
  };
  for (auto const size : sizes) take(size);
  take(reply.end() - start);
  return pieces;
}

}  // namespace sim
