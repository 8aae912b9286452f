// Texts for the printer's errors, as an administrator writes them: lines of KEYWORD TEXT.
#pragma once

#include <string>
#include <string_view>
#include <vector>

struct ReasonText {
  std::string keyword;
  std::string text;  // UTF-8
};

struct ReasonTexts {
  std::vector<ReasonText> texts;
  std::size_t error_line;  // 0: all lines are good
  std::string error;
};

// Reads the lines; empty ones and those that begin with # say nothing.
ReasonTexts parse_reason_texts(std::string_view bytes);

// Whether the bytes are well-formed UTF-8.
bool is_utf8(std::string_view bytes);
