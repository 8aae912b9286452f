// The dump as one would first write it: a formatted write for each piece, down to the byte.
// Stands in for the product's to show what composing a whole message saves.
#include <cstdio>

#include "diag/dump_mem.h"

void dump_mem(char const* label, void const* data, int size)
{
  auto const* const bytes = static_cast<unsigned char const*>(data);
  std::fprintf(stderr, "DEBUG: %s size=%d", label, size);
  for (int i = 0;; ++i) {
    if (size == 0 || (i % 16 == 0 && i < size)) std::fprintf(stderr, "\nDEBUG: %s %04x:", label, i);
    if (i >= size) break;
    std::fprintf(stderr, " %02x", bytes[i]);
  }
  std::fprintf(stderr, "\n");
}
