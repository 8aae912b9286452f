// Records whose type is none that the system makes, as memory gone wrong would hold them.
#pragma once

#include <cstdint>
#include <cstring>
#include <type_traits>

// The record with another number in its type, which is its first field.
template <typename Record>
Record retyped(Record record, std::int32_t type)
{
  static_assert(std::is_trivially_copyable_v<Record>);
  std::memcpy(static_cast<void*>(&record), &type, sizeof type);
  return record;
}

// The number in the record's first place, whichever of its bytes the processor puts first.
template <typename Record>
std::int32_t first_number_of(Record const& record)
{
  std::int32_t number = 0;
  std::memcpy(&number, &record, sizeof number);
  return number;
}

// The record's bytes as they stand in memory.
template <typename Record>
auto bytes_of(Record const& record)
{
  struct {
    unsigned char at[sizeof(Record)];
  } bytes;
  std::memcpy(bytes.at, &record, sizeof record);
  return bytes;
}
