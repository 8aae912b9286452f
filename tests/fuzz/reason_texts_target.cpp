// Any bytes as texts for the printer's errors: what is taken is what a PPD file can hold.
#include <cstdint>
#include <string>

#include "admin/ppd_attach.h"
#include "admin/ppd_records.h"
#include "tests/harness/require.h"

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
  ReasonTexts const result =
      parse_reason_texts(std::string_view(reinterpret_cast<char const*>(data), size));
  require((result.error_line == 0) == result.error.empty(), "an error has its line");
  require(result.error_line == 0 || result.texts.empty(), "of bad lines nothing is taken");

  PpdChange const change = attach("*LanguageEncoding: UTF-8\n", {false, result.texts});
  require(change.refusal.empty(), "a text of UTF-8 can be written in UTF-8");
  std::size_t found = 0;
  for (PpdRecord const& record : read_ppd_records(change.ppd).records) {
    if (record.keyword != "cupsIPPReason") continue;
    require_equal(record.option, result.texts.at(found).keyword);
    require_equal(record.text, result.texts.at(found).text);
    ++found;
  }
  require(found == result.texts.size(), "every text is in the file");
  return 0;
}
