// A reply of the printer, put together from the "[STS]" lines of the filter's dump.
#include "admin/logged_reply.h"

#include <charconv>
#include <optional>

#include "protocol/device_channel.h"

namespace {

constexpr std::string_view SIZE = "size=";
constexpr int HEX = 16;

// A number that fills the text.
std::optional<std::size_t> number(std::string_view text, int base)
{
  std::size_t value = 0;
  char const* const end = text.data() + text.size();
  auto const [stop, error] = std::from_chars(text.data(), end, value, base);
  if (error != std::errc() || stop != end) return std::nullopt;
  return value;
}

// The bytes of " 1b 45 57 55"; nothing if the line is torn.
std::optional<std::string> hex_bytes(std::string_view text)
{
  std::string bytes;
  for (; !text.empty(); text.remove_prefix(3)) {
    if (text.size() < 3 || text.front() != ' ') return std::nullopt;
    std::optional<std::size_t> const byte = number(text.substr(1, 2), HEX);
    if (!byte) return std::nullopt;
    bytes += static_cast<char>(*byte);
  }
  return bytes;
}

}  // namespace

bool begins_reply(std::string_view line) { return line.starts_with(SIZE); }

void LoggedReply::add(std::string_view line)
{
  begun = true;
  if (begins_reply(line)) {
    std::optional<std::size_t> const said = number(line.substr(SIZE.size()), 10);
    gap = !said || *said > std::tuple_size_v<ReplyBuffer>;
    size = said.value_or(0);
    return;
  }
  std::size_t const colon = line.find(':');
  std::optional<std::size_t> const offset = number(line.substr(0, colon), HEX);
  std::optional<std::string> const more =
      colon == std::string_view::npos ? std::nullopt : hex_bytes(line.substr(colon + 1));
  if (!offset || *offset != bytes.size() || !more || bytes.size() + more->size() > size) gap = true;
  if (!gap) bytes += *more;
}
