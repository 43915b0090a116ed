#include "FormBody.h"

#include <gtest/gtest.h>

namespace {

using orvane_service::FieldOf;
using orvane_service::ParseFormBody;

TEST(FormBodyTest, ReadsWhatStrictAndCarelessClientsSend) {
  const auto escaped = ParseFormBody("auth_key=k&username=J%C3%BCrgen+M&password=a%26b%3Dc%2Bd");
  EXPECT_EQ(FieldOf(escaped, "username"), "Jürgen M");
  EXPECT_EQ(FieldOf(escaped, "password"), "a&b=c+d");
  // The plug-in escapes nothing.
  const auto plain = ParseFormBody("auth_key=k&username=Jürgen M&password=a=b=100%");
  EXPECT_EQ(FieldOf(plain, "username"), "Jürgen M");
  EXPECT_EQ(FieldOf(plain, "password"), "a=b=100%");
}

TEST(FormBodyTest, HoldsUpToNonsense) {
  const auto fields = ParseFormBody("&&a=%zz&b=%4&c=%&=d&e&a=second&f=%-1");
  EXPECT_EQ(FieldOf(fields, "a"), "%zz");
  EXPECT_EQ(FieldOf(fields, "b"), "%4");
  EXPECT_EQ(FieldOf(fields, "c"), "%");
  EXPECT_EQ(FieldOf(fields, ""), "d");
  EXPECT_EQ(fields.count("e"), 1u);
  EXPECT_EQ(FieldOf(fields, "f"), "%-1");
  EXPECT_EQ(FieldOf(fields, "missing"), "");
  EXPECT_TRUE(ParseFormBody("").empty());
}

}  // namespace
