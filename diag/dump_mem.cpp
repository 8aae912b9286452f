// Hexadecimal dump of the bytes exchanged with the printer.
#include "diag/dump_mem.h"

#include <cstdio>
#include <string>

namespace {

constexpr int BYTES_PER_LINE = 16;

void append_hex(std::string& text, unsigned value, unsigned min_digits)
{
  unsigned digits = min_digits;
  while (digits < 8 && value >> (4 * digits) != 0) ++digits;
  while (digits-- > 0) text += "0123456789abcdef"[value >> (4 * digits) & 0xf];
}

void append_line_head(std::string& text, char const* label, int offset)
{
  text += "\nDEBUG: ";
  text += label;
  text += ' ';
  append_hex(text, static_cast<unsigned>(offset), 4);
  text += ':';
}

}  // namespace

void dump_mem(char const* label, void const* data, int size)
{
  auto const* const bytes = static_cast<unsigned char const*>(data);

  std::string text = "DEBUG: ";
  text += label;
  text += " size=";
  text += std::to_string(size);
  if (size == 0) append_line_head(text, label, 0);
  for (int i = 0; i < size; ++i) {
    if (i % BYTES_PER_LINE == 0) append_line_head(text, label, i);
    text += ' ';
    append_hex(text, bytes[i], 2);
  }
  text += '\n';

  // Written once: all programs of a job share the scheduler's status pipe, and a
  // dump written in pieces tears their "STATE:" lines as well as its own.
  std::fwrite(text.data(), 1, text.size(), stderr);
}
