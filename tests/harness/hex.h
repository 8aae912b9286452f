// Bytes as texts show them: two hexadecimal digits each.
#pragma once

#include <string>
#include <string_view>

inline void append_hex(std::string& text, unsigned byte)
{
  text += "0123456789abcdef"[byte / 16];
  text += "0123456789abcdef"[byte % 16];
}

// "1b 45 57 55"
std::string hex(std::string_view bytes);
