// The bytes of a conversation with the simulated printer, as the tests write them down.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <map>
#include <vector>

using Bytes = std::vector<std::uint8_t>;
using Fields = std::map<std::size_t, Bytes>;  // by the offset where they begin

inline Bytes join(Bytes left, Bytes const& right)
{
  left.insert(left.end(), right.begin(), right.end());
  return left;
}

// A reply of this length with these fields, and zeros elsewhere.
inline Bytes reply_with(std::size_t length, Fields const& fields)
{
  Bytes reply(length);
  for (auto const& [offset, bytes] : fields)
    std::ranges::copy(bytes, reply.begin() + static_cast<std::ptrdiff_t>(offset));
  return reply;
}

// The status reply of a good printer with 350 of 700 prints left, but for these fields.
inline Bytes status_with(Fields fields)
{
  fields.merge(Fields{{145, {0x84}}, {148, {0x02, 0xbc}}, {150, {0x01, 0x5e}}});
  return reply_with(192, fields);
}
