// The comparison of two texts, whose failure is read at a glance.
#pragma once

#include <gtest/gtest.h>

#include "tests/harness/text_difference.h"

inline testing::AssertionResult same_text(char const* is_name, char const* /*should_be_name*/,
                                          std::string_view is, std::string_view should_be)
{
  std::string const difference = text_difference(is, should_be);
  if (difference.empty()) return testing::AssertionSuccess();
  return testing::AssertionFailure() << is_name << ", " << difference;
}

#define EXPECT_TEXT(is, should_be) EXPECT_PRED_FORMAT2(same_text, is, should_be)
#define ASSERT_TEXT(is, should_be) ASSERT_PRED_FORMAT2(same_text, is, should_be)
