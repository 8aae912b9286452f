#include "admin/ppd_encoding.h"

#include <gtest/gtest.h>

namespace {

cups_encoding_t encoding_of(std::string const& ppd)
{
  return ppd_encoding(read_ppd_records(ppd).records);
}

}  // namespace

TEST(PpdEncoding, IsTheOneThatTheFileNames)
{
  EXPECT_EQ(encoding_of("*LanguageEncoding: ISOLatin1\n"), CUPS_ISO8859_1);
  EXPECT_EQ(encoding_of("*LanguageEncoding: isolatin2\n"), CUPS_ISO8859_2);
  EXPECT_EQ(encoding_of("*LanguageEncoding: \"WindowsANSI\"\n"), CUPS_WINDOWS_1252);
  EXPECT_EQ(encoding_of("*LanguageEncoding: ISOLatin5\n"), CUPS_ISO8859_5);
  EXPECT_EQ(encoding_of("*LanguageEncoding: JIS83-RKSJ\n"), CUPS_JIS_X0213);
  EXPECT_EQ(encoding_of("*LanguageEncoding: MacStandard\n"), CUPS_MAC_ROMAN);
  EXPECT_EQ(encoding_of("*LanguageEncoding: UTF-8\n"), CUPS_UTF8);
  EXPECT_EQ(encoding_of("*A: 1\n"), CUPS_ISO8859_1);
}

TEST(PpdEncoding, WritesATextInIt)
{
  EXPECT_EQ(encoded("Tür", CUPS_ISO8859_1), "T\xfcr");
  EXPECT_EQ(encoded("Tür →", CUPS_UTF8), "Tür →");
  EXPECT_EQ(encoded("5 €", CUPS_WINDOWS_1252), "5 \x80");
  EXPECT_EQ(encoded("why?", CUPS_ISO8859_1), "why?");
}

TEST(PpdEncoding, RefusesWhatItDoesNotHave)
{
  EXPECT_EQ(encoded("5 €", CUPS_ISO8859_1), std::nullopt);
  EXPECT_EQ(encoded("→", CUPS_WINDOWS_1252), std::nullopt);
}

TEST(PpdEncoding, ReadsATextBack)
{
  EXPECT_EQ(decoded("T\xfcr", CUPS_ISO8859_1), "Tür");
  EXPECT_EQ(decoded("", CUPS_ISO8859_1), "");
}

TEST(PpdEncoding, ATextThatIsNotInItStaysAsItIs)
{
  EXPECT_EQ(decoded("\x81", CUPS_JIS_X0213), "\x81");
}
