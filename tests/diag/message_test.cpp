// A message is one write, whole and in order, whatever becomes of it.
#include "diag/message.h"

#include <fcntl.h>
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/harness/stderr_capture.h"

namespace {

using Writes = std::vector<std::string>;

TEST(Message, ItsPiecesGoOutInOrderInOneWrite)
{
  StderrWrites capture;
  write_message("DEBUG: ", std::string("name"), "() START", std::string_view("\n"));
  write_message("second\n");
  EXPECT_EQ(capture.take(), (Writes{"DEBUG: name() START\n", "second\n"}));
}

TEST(Message, EmptyPiecesLeaveNoTrace)
{
  StderrWrites capture;
  write_message("", "a", "", "\n", "");
  EXPECT_EQ(capture.take(), Writes{"a\n"});
}

TEST(Message, TextIsNotAFormat)
{
  StderrWrites capture;
  write_message("%s%n", "100%", "\n");
  EXPECT_EQ(capture.take(), Writes{"%s%n100%\n"});
}

TEST(Message, ALongPieceIsWrittenWhole)
{
  std::string const text = std::string(10000, 'x') + "\n";
  StderrWrites capture;
  write_message("DEBUG: ", text);
  EXPECT_EQ(capture.take(), Writes{"DEBUG: " + text});
}

TEST(Message, AWriteThatFailsIsForgotten)
{
  int const full = open("/dev/full", O_WRONLY | O_CLOEXEC);
  ASSERT_GE(full, 0);
  StderrWrites capture;
  {
    Descriptor2 const lost(full);
    write_message("lost\n");
  }
  close(full);
  write_message("next\n");
  EXPECT_EQ(capture.take(), Writes{"next\n"});
}

}  // namespace
