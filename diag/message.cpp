// One message for the scheduler, written whole.
#include "diag/message.h"

#include <cstdio>
#include <string>

void write_message(std::initializer_list<std::string_view> pieces)
{
  std::size_t size = 0;
  for (std::string_view piece : pieces) size += piece.size();

  std::string text;
  text.reserve(size);
  for (std::string_view piece : pieces) text += piece;
  std::fwrite(text.data(), 1, text.size(), stderr);
}
