// The printer's job status reply: four status bytes at a fixed offset.
#include "protocol/job_status.h"

#include <cstddef>
#include <cstdio>
#include <cstring>

namespace {

constexpr std::size_t STATUS = 8;  // offset of the first of the four bytes

// The first status byte says whether the printer is ready. 10 or 20: it is not. 50: the second
// byte decides, ready from 30 on. Anything else: it is.
constexpr std::uint8_t NOT_READY[] = {0x10, 0x20};
constexpr std::uint8_t DEPENDS = 0x50;
constexpr std::uint8_t READY_FROM = 0x30;

}  // namespace

JobStatus::JobStatus(Type kind) : type(kind) {}

JobStatus JobStatus::Unavailable() { return JobStatus(Type::Unavailable); }

JobStatus JobStatus::Parse(char const* reply)
{
  JobStatus job(Type::Available);
  std::memcpy(job.status, reply + STATUS, sizeof job.status);
  return job;
}

bool JobStatus::isAvailable() const { return type == Type::Available; }

bool JobStatus::isReady() const
{
  if (type == Type::Unavailable) return false;
  if (status[0] == NOT_READY[0] || status[0] == NOT_READY[1]) return false;
  if (status[0] == DEPENDS) return status[1] >= READY_FROM;
  return true;
}

std::string JobStatus::to_string() const
{
  if (type == Type::Unavailable) return "UNAVAILABLE";
  if (type != Type::Available) return "UNKNOWN";

  char text[32];
  std::snprintf(text, sizeof text, "0x%02x,0x%02x,0x%02x,0x%02x", status[0], status[1], status[2],
                status[3]);
  return text;
}
