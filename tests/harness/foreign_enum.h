// Numbers from outside in the library's enumerations, which have no enumerator for them.
#pragma once

#include <cstring>

// Stores any 32-bit number in an enumeration variable, as data read from a file does.
template <typename Enum>
void store_number(Enum& place, int number)
{
  static_assert(sizeof place == sizeof number);
  std::memcpy(&place, &number, sizeof number);
}

// The number as an enumeration value. Handing it on reads it once, which is the very
// thing that the enumeration check would stop here, before the code under test has it.
template <typename Enum>
__attribute__((no_sanitize("enum"))) Enum foreign_enum(int number)
{
  Enum value;
  store_number(value, number);
  return value;
}
