// The records' common form: their type first, which may also hold a number that the system never
// stores there, as memory gone wrong would.
#pragma once

#include <cstdint>
#include <cstring>
#include <string>
#include <type_traits>

// What the types of all records have in common; a scoped enumeration is no number by itself.
template <typename Record>
concept TypedRecord = requires
{
  requires std::is_same_v<std::underlying_type_t<typename Record::Type>, std::int32_t>;
  requires !std::is_convertible_v<typename Record::Type, std::int32_t>;
  requires static_cast<int>(Record::Type::Unavailable) == 0;
  requires static_cast<int>(Record::Type::Available) == 1;
  requires !std::is_polymorphic_v<Record>;
};

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

// The bytes behind the type as they stand in memory.
template <typename Record>
std::string bytes_after_type(Record const& record)
{
  std::string bytes(sizeof record, '\0');
  std::memcpy(bytes.data(), &record, sizeof record);
  return bytes.substr(sizeof(std::int32_t));
}
