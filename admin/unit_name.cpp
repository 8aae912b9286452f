// The name of the service that keeps a queue fresh.
#include "admin/unit_name.h"

namespace {

// A dash would be taken back as a slash, and a dot in front would hide a file.
bool is_plain(char ch, bool is_first)
{
  constexpr std::string_view PLAIN =
      "0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz:_.";
  return PLAIN.find(ch) != std::string_view::npos && !(ch == '.' && is_first);
}

std::string escaped(char ch)
{
  constexpr std::string_view DIGITS = "0123456789abcdef";
  auto const byte = static_cast<unsigned char>(ch);
  return {'\\', 'x', DIGITS[byte / 16U], DIGITS[byte % 16U]};
}

}  // namespace

std::string refresh_unit(std::string_view queue)
{
  std::string name = "velmo-refresh@";
  for (std::size_t i = 0; i < queue.size(); ++i)
    name += is_plain(queue[i], i == 0) ? std::string(1, queue[i]) : escaped(queue[i]);
  return name + ".service";
}
