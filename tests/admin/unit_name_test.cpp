#include "admin/unit_name.h"

#include <gtest/gtest.h>

TEST(UnitName, AnOrdinaryNameIsTakenAsItIs)
{
  std::string const name =
      "Photo_1.b:c0123456789ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz";
  EXPECT_EQ(refresh_unit(name), "velmo-refresh@" + name + ".service");
}

TEST(UnitName, WhatSystemdReadsOtherwiseIsEscaped)
{
  EXPECT_EQ(refresh_unit("photo-booth"), R"(velmo-refresh@photo\x2dbooth.service)");
  EXPECT_EQ(refresh_unit(".photo"), R"(velmo-refresh@\x2ephoto.service)");
  EXPECT_EQ(refresh_unit(R"(a\b%c$d'e@f)"), R"(velmo-refresh@a\x5cb\x25c\x24d\x27e\x40f.service)");
  EXPECT_EQ(refresh_unit("b\xc3\xbc"), R"(velmo-refresh@b\xc3\xbc.service)");
  EXPECT_EQ(refresh_unit("{\xff"), R"(velmo-refresh@\x7b\xff.service)");
}
