// Dumps, query transcripts and reason lines as they must be.
#include "tests/oracle/expected_texts.h"

#include "tests/harness/fake_world.h"

namespace {

std::string offset_text(std::size_t offset)
{
  static constexpr char DIGITS[] = "0123456789abcdef";
  std::string text;
  for (; offset > 0; offset /= 16) text.insert(text.begin(), DIGITS[offset % 16]);
  while (text.size() < 4) text.insert(text.begin(), '0');
  return text;
}

std::string keyword(int number)
{
  return "com.velmo-error00" + std::string(number < 10 ? "0" : "") + std::to_string(number);
}

}  // namespace

std::string expected_dump(std::string const& label, std::string const& bytes)
{
  std::string text = "DEBUG: " + label + " size=" + std::to_string(bytes.size()) + "\n";
  if (bytes.empty()) text += "DEBUG: " + label + " 0000:\n";
  for (std::size_t offset = 0; offset < bytes.size(); offset += 16) {
    text += "DEBUG: " + label + " " + offset_text(offset) + ": " + hex(bytes.substr(offset, 16));
    text += "\n";
  }
  return text;
}

std::string expected_status_query(std::string const& reply)
{
  return "DEBUG: get_printer_info() START\n"
         "DEBUG: [CMD] size=4\n"
         "DEBUG: [CMD] 0000: 1b 56 32 31\n"
         "> fwrite(1 x 4: 1b 56 32 31)\n"
         "> fflush(stdout)\n"
         "> cupsSideChannelDoRequest(2, room for 512, 5.000 s)\n"
         "> cupsBackChannelRead(room for 512, 1.000 s)\n"
         + expected_dump("[STS]", reply) + "DEBUG: get_printer_info() END\n";
}

std::string expected_states(int current)
{
  std::string text;
  if (current != 0) text += "STATE: +" + keyword(current) + "\n";
  for (int known : {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 18, 20, 21, 22, 23}) {
    if (known != current) text += "STATE: -" + keyword(known) + "\n";
  }
  return text;
}
