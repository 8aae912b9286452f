// Every pair of counts, with every ink sheet code that the report knows or nearly knows,
// through the level report.
// Usage: supply_levels FIRST END          (of the total count, 0 65536 for all 2^32 pairs)
//        supply_levels --turn FIRST END   (the same pairs, with one ink sheet each, in turn)
//        supply_levels --sample           (the pairs of the values at which something changes)
#include <cstdint>
#include <numeric>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "report/printer_levels_report.h"
#include "tests/exhaustive/comparison.h"
#include "tests/oracle/levels.h"

namespace {

enum class InkSheets : std::uint8_t { All, InTurn };

constexpr unsigned INK_SHEETS[] = {0x00, 0x83, 0x84, 0x85, 0x8e, 0x8f, 0x90, 0xfe, 0xff};

std::string expected;
unsigned long cases = 0;

void check(Ribbon const& ribbon, unsigned level)
{
  report_printer_levels(PrinterLevels::Fill(static_cast<unsigned short>(ribbon.total),
                                            static_cast<unsigned short>(ribbon.remaining),
                                            static_cast<unsigned char>(ribbon.ink_sheet)));
  append_level_report(expected, ribbon, level);
  compare_messages(expected, cases, [ribbon] {
    std::string name;
    append_ribbon_text(name, ribbon);
    return name;
  });
}

// Goes up with the remaining count, so that the level is found without a division: the
// highest whole number whose share of the total is not more than what remains.
void check_total(unsigned total, std::vector<unsigned> const& remaining_counts, InkSheets which)
{
  std::span<unsigned const> const all = INK_SHEETS;
  unsigned level = 0;
  for (unsigned remaining : remaining_counts) {
    while (total != 0 && (level + 1) * total <= remaining * 100) ++level;
    auto const sheets =
        which == InkSheets::All ? all : all.subspan((total + remaining) % all.size(), 1);
    for (unsigned ink_sheet : sheets) check({total, remaining, ink_sheet}, level);
  }
}

std::vector<unsigned> all_counts()
{
  std::vector<unsigned> counts(65536);
  std::iota(counts.begin(), counts.end(), 0U);
  return counts;
}

std::vector<unsigned> sample_counts()
{
  return {0,    1,    2,    3,    9,     10,    11,    49,    50,    51,    99,    100,   101,
          199,  200,  201,  255,  256,   257,   299,   300,   301,   699,   700,   701,   999,
          1000, 1001, 4095, 4096, 10000, 20000, 32767, 32768, 32769, 50000, 65533, 65534, 65535};
}

void check_totals(char const* first, char const* last, InkSheets which)
{
  std::vector<unsigned> const remaining_counts = all_counts();
  auto const end = static_cast<unsigned>(std::stoul(last));
  for (auto total = static_cast<unsigned>(std::stoul(first)); total < end; ++total)
    check_total(total, remaining_counts, which);
}

}  // namespace

int main(int argc, char* argv[])
{
  std::string_view const option = argc > 1 ? argv[1] : "";
  if (argc == 2 && option == "--sample") {
    for (unsigned total : sample_counts()) check_total(total, sample_counts(), InkSheets::All);
  } else if (bool const in_turn = option == "--turn"; argc == (in_turn ? 4 : 3)) {
    check_totals(argv[argc - 2], argv[argc - 1], in_turn ? InkSheets::InTurn : InkSheets::All);
  } else {
    std::printf("Usage: %s [--turn] FIRST END | --sample\n", argv[0]);
    return 2;
  }
  std::printf("%lu level reports\n", cases);
  return 0;
}
