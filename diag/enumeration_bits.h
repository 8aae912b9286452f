// The number that an enumeration of the CUPS library really holds.
#pragma once

#include <cstring>

// Backends and raster data put any number into these variables. Copied as bytes, never
// read as an enumerator: a number outside the enumeration would make the read undefined.
template <typename Enumeration>
int enumeration_bits(Enumeration const& value)
{
  static_assert(sizeof value == sizeof(int));
  int number = 0;
  std::memcpy(&number, &value, sizeof number);
  return number;
}
