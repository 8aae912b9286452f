// Hexadecimal dump of the bytes exchanged with the printer.
#include "diag/dump_mem.h"

#include <algorithm>
#include <string>

#include "diag/message.h"

namespace {

constexpr int BYTES_PER_LINE = 16;
constexpr int OFFSET_DIGITS = 4;  // at least

// By hand: a printf conversion for each of 192 bytes costs more than the rest of a query.
char* put_hex(char* at, int value, int digits)
{
  while (digits-- > 0) *at++ = "0123456789abcdef"[value >> 4 * digits & 0xf];
  return at;
}

// The line's own newline comes with the next line, or ends the dump.
void append_line(std::string& text, char const* label, int offset, unsigned char const* bytes,
                 int count)
{
  int digits = OFFSET_DIGITS;
  for (int rest = offset >> 4 * digits; rest != 0; rest >>= 4) ++digits;

  char line[1 + 8 + 1 + 3 * BYTES_PER_LINE];  // blank, offset, colon, bytes
  char* end = line;
  *end++ = ' ';
  end = put_hex(end, offset, digits);
  *end++ = ':';
  for (int i = 0; i < count; ++i) {
    *end++ = ' ';
    end = put_hex(end, bytes[i], 2);
  }

  text += "\nDEBUG: ";
  text += label;
  text.append(line, end);
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
  write_message(text);
}
