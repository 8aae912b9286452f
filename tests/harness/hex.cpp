// Bytes as texts show them.
#include "tests/harness/hex.h"

std::string hex(std::string_view bytes)
{
  std::string text;
  for (char byte : bytes) {
    if (!text.empty()) text += ' ';
    append_hex(text, static_cast<unsigned char>(byte));
  }
  return text;
}
