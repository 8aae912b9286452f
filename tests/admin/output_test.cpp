#include "admin/output.h"

#include <gtest/gtest.h>

TEST(Output, ControlCharactersAreNotShown)
{
  EXPECT_EQ(printable("a\x1b[2Jb\nc\x7f"), "a?[2Jb?c?");
  EXPECT_EQ(printable("a\tb"), "a\tb");
  EXPECT_EQ(printable("\xc2\x9b"
                      "2J \xc2\xa0 \xc2"),
            "?2J \xc2\xa0 \xc2");
  // Capital A with circumflex in ISO 8859-1.
  EXPECT_EQ(printable("\xc2"
                      "bc"),
            "\xc2"
            "bc");
}

TEST(Output, AShellTakesAQuotedWordAsItIs)
{
  EXPECT_EQ(shell_quoted("z|id>x|e;"), "'z|id>x|e;'");
  EXPECT_EQ(shell_quoted("a'b"), "'a'\\''b'");
}
