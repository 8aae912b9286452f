#include "admin/ppd_check.h"

#include <gtest/gtest.h>

#include "tests/admin/fake_scheduler.h"

TEST(PpdCheck, WhatCupsReadsHasNoFault) { EXPECT_EQ(ppd_fault(PLAIN_PPD), ""); }

TEST(PpdCheck, AFaultIsNamedByTheLineWhereCupsGivesUp)
{
  EXPECT_EQ(ppd_fault("*PPD-Adobe: \"4.3\"\n*A: 1\nno keyword\n"),
            "CUPS cannot read the PPD file beyond line 3; cupstestppd says what is wrong there");
  // Of a file without lines it says 0.
  EXPECT_EQ(ppd_fault(""),
            "CUPS cannot read the PPD file beyond line 1; cupstestppd says what is wrong there");
}
