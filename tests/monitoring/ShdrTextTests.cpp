// The adapter's lines.
#include <string>

#include <gtest/gtest.h>
#include <rapidcheck.h>

#include "monitoring/ShdrText.h"

namespace torvane::monitoring {
namespace {

TEST(ShdrText, TimestampsAreUtcWithMilliseconds) {
  EXPECT_EQ(TimestampText(0), "1970-01-01T00:00:00.000Z");
  EXPECT_EQ(TimestampText(1'772'600'767'089), "2026-03-04T05:06:07.089Z");
  EXPECT_EQ(TimestampText(951'782'399'999), "2000-02-28T23:59:59.999Z");
  EXPECT_EQ(TimestampText(-1), "1969-12-31T23:59:59.999Z");
}

struct FieldRow {
  const char* Text;
  const char* Field;
};
constexpr FieldRow FieldRows[] = {
    {"SHOP/STAR", "SHOP/STAR"},           {" blanks around ", "blanks around"},
    {"two\r\nlines", "two  lines"},       {"a|b", "\"a\\|b\""},
    {"gr\xFC\xDF", "gr\xC3\xBC\xC3\x9F"}, {"", ""},
    {"tab\tbell\x07", "tab bell "},
};

TEST(ShdrText, AFieldHoldsNoDividerAndNoLineEnd) {
  for (const auto& row : FieldRows) EXPECT_EQ(Field(row.Text), row.Field) << row.Text;
}

TEST(ShdrText, AnyTextIsOneField) {
  EXPECT_TRUE(rc::check("a field never ends the line or the field", [](const std::string& text) {
    const std::string field = Field(text);
    for (std::size_t i = 0; i < field.size(); ++i) {
      RC_ASSERT(static_cast<unsigned char>(field[i]) >= ' ');
      if (field[i] == '|') RC_ASSERT(i > 0 && field[i - 1] == '\\');
    }
  }));
}

TEST(ShdrText, ALineHasItsTimeItsKeyAndItsValue) {
  EXPECT_EQ(ItemLine("T", "Xact", "12.3"), "T|Xact|12.3\n");
}

TEST(ShdrText, APingIsAnsweredWithTheHeartbeat) {
  EXPECT_TRUE(IsPing("* PING"));
  EXPECT_TRUE(IsPing("* PING\r"));
  EXPECT_FALSE(IsPing("* PINGS"));
  EXPECT_FALSE(IsPing(""));
  EXPECT_EQ(PongLine(10000), "* PONG 10000\n");
}

}  // namespace
}  // namespace torvane::monitoring
