// Every error code through the reason report.
// Usage: error_codes FIRST END   (of the code's first byte, 0 256 for all 2^24 codes)
//        error_codes --sample    (every known code's neighbours, and each 251st code)
#include <string>
#include <string_view>

#include "report/printer_state_report.h"
#include "tests/exhaustive/comparison.h"
#include "tests/oracle/reasons.h"

namespace {

std::string expected;
unsigned long cases = 0;

void check(unsigned code)
{
  unsigned char const bytes[3] = {static_cast<unsigned char>(code >> 16),
                                  static_cast<unsigned char>(code >> 8),
                                  static_cast<unsigned char>(code)};
  update_printer_state(PrinterState::Error(&bytes));
  append_reason_report(expected, code);
  compare_messages(expected, cases, [code] { return "code " + code_text(code); });
}

void check_neighbours(unsigned code)
{
  for (unsigned shift : {0U, 8U, 16U})
    for (unsigned byte = 0; byte < 256; ++byte) check((code & ~(0xffU << shift)) | byte << shift);
}

void check_sample()
{
  for (KnownCode const& known : known_codes()) check_neighbours(known.code);
  for (unsigned code = 0; code < 1U << 24; code += 251) check(code);
}

}  // namespace

int main(int argc, char* argv[])
{
  if (argc == 2 && std::string_view(argv[1]) == "--sample") {
    check_sample();
  } else if (argc == 3) {
    auto const end = static_cast<unsigned>(std::stoul(argv[2])) << 16;
    for (auto code = static_cast<unsigned>(std::stoul(argv[1])) << 16; code < end; ++code)
      check(code);
  } else {
    std::printf("Usage: %s FIRST END | --sample\n", argv[0]);
    return 2;
  }
  std::printf("%lu error codes\n", cases);
  return 0;
}
