// The character encoding that a PPD file names for its texts.
#include "admin/ppd_encoding.h"

#include <cups/transcode.h>

namespace {

struct EncodingName {
  std::string_view name;
  cups_encoding_t encoding;
};

// As libcups reads the names; it takes every other name for UTF-8.
constexpr EncodingName ENCODINGS[] = {
    {"ISOLatin1", CUPS_ISO8859_1},   {"ISOLatin2", CUPS_ISO8859_2},
    {"ISOLatin5", CUPS_ISO8859_5},   {"JIS83-RKSJ", CUPS_JIS_X0213},
    {"MacStandard", CUPS_MAC_ROMAN}, {"WindowsANSI", CUPS_WINDOWS_1252},
};

// Room for a text of a PPD file in any encoding, some characters of which have four bytes.
constexpr int MOST_BYTES = 1024;

std::string to_utf8(std::string const& text, cups_encoding_t encoding)
{
  cups_utf8_t utf8[MOST_BYTES] = {};
  cupsCharsetToUTF8(utf8, text.c_str(), MOST_BYTES, encoding);
  return reinterpret_cast<char const*>(utf8);
}

}  // namespace

cups_encoding_t ppd_encoding(std::vector<PpdRecord> const& records)
{
  cups_encoding_t encoding = CUPS_ISO8859_1;
  for (PpdRecord const& record : records) {
    if (!record.has_value || record.keyword != "LanguageEncoding") continue;
    encoding = CUPS_UTF8;
    for (EncodingName const& known : ENCODINGS)
      if (same_keyword(record.value, known.name)) encoding = known.encoding;
  }
  return encoding;
}

// libcups writes a question mark or nothing for what it cannot write: only a text that comes
// back the same has been written.
std::optional<std::string> encoded(std::string const& utf8, cups_encoding_t encoding)
{
  char text[MOST_BYTES] = {};
  auto const* const source = reinterpret_cast<cups_utf8_t const*>(utf8.c_str());
  cupsUTF8ToCharset(text, source, MOST_BYTES, encoding);
  if (to_utf8(text, encoding) != utf8) return std::nullopt;
  return text;
}

std::string decoded(std::string const& text, cups_encoding_t encoding)
{
  std::string utf8 = to_utf8(text, encoding);
  return utf8.empty() ? text : utf8;
}
