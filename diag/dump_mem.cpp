// Hexadecimal dump of the bytes exchanged with the printer.
#include "diag/dump_mem.h"

#include <algorithm>
#include <charconv>
#include <string>

#include "diag/message.h"

namespace {

constexpr int BYTES_PER_LINE = 16;
constexpr std::size_t OFFSET_DIGITS = 4;  // at least

void append_offset(std::string& text, int offset)
{
  char digits[8];
  char const* const end = std::to_chars(digits, std::end(digits), offset, 16).ptr;
  auto const length = static_cast<std::size_t>(end - digits);
  if (length < OFFSET_DIGITS) text.append(OFFSET_DIGITS - length, '0');
  text.append(digits, length);
}

// The line's own newline comes with the next line, or ends the dump.
void append_line(std::string& text, char const* label, int offset, unsigned char const* bytes,
                 int count)
{
  text += "\nDEBUG: ";
  text += label;
  text += ' ';
  append_offset(text, offset);
  text += ':';

  char hex[BYTES_PER_LINE * 3];
  char* end = hex;
  for (int i = 0; i < count; ++i) {
    *end++ = ' ';
    *end++ = "0123456789abcdef"[bytes[i] >> 4];
    *end++ = "0123456789abcdef"[bytes[i] & 0xf];
  }
  text.append(hex, end);
}

}  // namespace

void dump_mem(char const* label, void const* data, int size)
{
  auto const* const bytes = static_cast<unsigned char const*>(data);

  std::string text = "DEBUG: ";
  text += label;
  text += " size=";
  text += std::to_string(size);
  if (size == 0) append_line(text, label, 0, bytes, 0);
  for (int i = 0; i < size; i += BYTES_PER_LINE)
    append_line(text, label, i, bytes + i, std::min(BYTES_PER_LINE, size - i));
  text += '\n';
  write_message({text});
}
