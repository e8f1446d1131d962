// Rounding and the text of numbers.
#include <bit>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <random>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "core/General.h"

namespace torvane::core {
namespace {

/// The C library rounds half to even on the exact value: an independent way to the same digits.
std::string PrintedText(double value, int places) {
  std::array<char, 512> text{};
  std::snprintf(text.data(), text.size(), "%.*f", places, value);
  return text.data();
}

template <class Float>
std::string LibraryShortest(Float value) {
  std::array<char, 512> text{};
  const auto end =
      std::to_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed).ptr;
  return {text.data(), end};
}

/// Numbers of a shop, halves that are exact in binary, and any bits at all.
double AnyNumber(std::mt19937_64& random, int i) {
  const double wide = std::uniform_real_distribution<double>(-20000, 20000)(random);
  switch (i % 5) {
    case 0:
      return wide;
    case 1:
      return std::round(wide * 1000) / 1000 + 0.0005;
    case 2:
      return std::round(wide * 4096) / 4096;
    case 3:
      return std::bit_cast<double>(random());
    default:
      return wide * std::pow(10.0, static_cast<double>(random() % 30) - 15.0);
  }
}

TEST(RoundPlaces, RoundsHalvesToEven) {
  EXPECT_EQ(RoundPlaces(2.5, 0), 2);
  EXPECT_EQ(RoundPlaces(3.5, 0), 4);
  EXPECT_EQ(RoundPlaces(-2.5, 0), -2);
  EXPECT_EQ(RoundPlaces(0.125, 2), 0.12);
  EXPECT_EQ(RoundPlaces(0.375, 2), 0.38);
}

TEST(RoundPlaces, LooksAtTheExactValueAndNotAtAScaledProduct) {
  EXPECT_EQ(RoundPlaces(1.005, 2), 1.0);       // lies below the half; 1.005 * 100 rounds to 100.5
  EXPECT_EQ(RoundPlaces(0.00005, 4), 0.0001);  // lies above the half
  EXPECT_EQ(RoundPlaces(1.0005, 3), 1.0);
  EXPECT_EQ(RoundPlaces(2.675, 2), 2.67);
}

TEST(RoundPlaces, NeverGivesANegativeZero) {
  EXPECT_FALSE(std::signbit(RoundPlaces(-0.00001, 4)));
  EXPECT_FALSE(std::signbit(RoundPlaces(-0.0, 4)));
}

TEST(RoundPlaces, LeavesWhatIsTooLargeForDecimalsAndWhatIsNotFinite) {
  EXPECT_EQ(RoundPlaces(1e300, 4), 1e300);
  EXPECT_EQ(RoundPlaces(9007199254740993.0, 0), 9007199254740993.0);
  EXPECT_TRUE(std::isinf(RoundPlaces(std::numeric_limits<double>::infinity(), 4)));
  EXPECT_TRUE(std::isnan(RoundPlaces(std::numeric_limits<double>::quiet_NaN(), 4)));
}

TEST(RoundPlaces, AgreesWithTheCLibraryOnAnyNumber) {
  std::mt19937_64 random(7);
  for (int i = 0; i < 200000; ++i) {
    const double value = AnyNumber(random, i);
    if (!std::isfinite(value)) continue;
    const int places = static_cast<int>(random() % 16);
    const double expected = std::strtod(PrintedText(value, places).c_str(), nullptr);
    ASSERT_EQ(RoundPlaces(value, places), expected) << LibraryShortest(value) << " " << places;
  }
}

RC_GTEST_PROP(RoundPlaces, IsItsOwnRounding, ()) {
  const auto scaled = *rc::gen::inRange<std::int64_t>(-100000000000, 100000000000);
  const int places = *rc::gen::inRange(0, 6);
  const double value = static_cast<double>(scaled) / 1e5;
  const double once = RoundPlaces(value, places);
  RC_ASSERT(RoundPlaces(once, places) == once);
  // Both are the nearest doubles to their decimals: at exactly a half that shows.
  RC_ASSERT(std::fabs(once - value) <= 0.5 * std::pow(10.0, -places) + 1e-9);
}

TEST(NumberText, ShortestTextOfADouble) {
  EXPECT_EQ(NumberText(0.0, -1), "0");
  EXPECT_EQ(NumberText(12.3, -1), "12.3");
  EXPECT_EQ(NumberText(-0.5, -1), "-0.5");
  EXPECT_EQ(NumberText(100.0, -1), "100");
  EXPECT_EQ(NumberText(1.0 / 3.0, -1), "0.3333333333333333");
}

TEST(NumberText, AVerySmallNumberIsZero) {
  EXPECT_EQ(NumberText(0.00001, -1), "0");
  EXPECT_EQ(NumberText(-0.00001, -1), "0");
  EXPECT_EQ(NumberText(0.0001, -1), "0.0001");
  EXPECT_EQ(NumberText(0.0001F, -1), "0.0001");
  EXPECT_EQ(NumberText(0.000123, -1), "0.000123");
  EXPECT_EQ(NumberText(std::nextafter(0.0001, 0.0), -1), "0");
  EXPECT_EQ(NumberText(0.00005, 5), "0.00000");
  EXPECT_EQ(NumberText(0.00005, 4), "0.0001");
}

TEST(NumberText, FixedPlacesAlwaysStand) {
  EXPECT_EQ(NumberText(-0.5, 2), "-0.50");
  EXPECT_EQ(NumberText(3.0, 2), "3.00");
  EXPECT_EQ(NumberText(2.5, 0), "2");
  EXPECT_EQ(NumberText(3.5, 0), "4");
  EXPECT_EQ(NumberText(1.23456789, 9), "1.234568");  // more than 6 places count as 6
  EXPECT_EQ(NumberText(0.05, 3), "0.050");
}

TEST(NumberText, AZeroHasNoSign) {
  EXPECT_EQ(NumberText(-0.0, -1), "0");
  EXPECT_EQ(NumberText(-0.001, 2), "0.00");
  EXPECT_EQ(NumberText(-0.4, 0), "0");
  EXPECT_EQ(NumberText(-0.0F, 3), "0.000");
}

TEST(NumberText, ASingleHasItsOwnShortestText) {
  EXPECT_EQ(NumberText(12.3F, -1), "12.3");
  EXPECT_EQ(NumberText(static_cast<double>(12.3F), -1), "12.300000190734863");
  EXPECT_EQ(NumberText(5000.003F, -1), "5000.003");
  EXPECT_EQ(NumberText(1234.5677F, -1), "1234.5677");
  EXPECT_EQ(NumberText(-20.421F, -1), "-20.421");
  EXPECT_EQ(NumberText(16777216.0F, -1), "16777216");
}

TEST(NumberText, LargeNumbersStayPlainDecimals) {
  EXPECT_EQ(NumberText(1e16, -1), "10000000000000000");
  EXPECT_EQ(NumberText(1e22, -1), "10000000000000000000000");
  EXPECT_EQ(NumberText(-1e17, 2), "-100000000000000000.00");
  EXPECT_EQ(NumberText(3e10F, 0), "30000001024");
  const std::string longest = NumberText(-std::numeric_limits<double>::max(), 6);
  EXPECT_EQ(longest.size(), 1U + 309U + 7U);
  EXPECT_EQ(longest.find_first_not_of("-0123456789."), std::string::npos);
}

TEST(NumberText, WhatIsNoFiniteNumberIsZero) {
  EXPECT_EQ(NumberText(std::numeric_limits<double>::infinity(), -1), "0");
  EXPECT_EQ(NumberText(-std::numeric_limits<float>::infinity(), 2), "0.00");
  EXPECT_EQ(NumberText(std::numeric_limits<double>::quiet_NaN(), 0), "0");
}

TEST(NumberText, FixedPlacesAgreeWithTheCLibraryOnAnyNumber) {
  std::mt19937_64 random(11);
  for (int i = 0; i < 200000; ++i) {
    const double value = AnyNumber(random, i);
    if (!std::isfinite(value) || std::fabs(value) > 1e9) continue;
    const int places = static_cast<int>(random() % 7);
    std::string expected = PrintedText(value, places);
    if (std::fabs(std::strtod(expected.c_str(), nullptr)) < 0.0001) {
      expected = PrintedText(0, places);
    }
    ASSERT_EQ(NumberText(value, places), expected);
  }
}

template <class Float>
void ExpectShortest(Float value) {
  if (!std::isfinite(value) || std::fabs(value) < static_cast<Float>(0.0001)) return;
  ASSERT_EQ(NumberText(value, -1), LibraryShortest(value));
}

TEST(NumberText, ShortestTextAgreesWithTheLibraryOnAnyNumber) {
  std::mt19937_64 random(13);
  for (int i = 0; i < 200000; ++i) {
    const double value = AnyNumber(random, i);
    ExpectShortest(value);
    ExpectShortest(static_cast<float>(value));
    ExpectShortest(static_cast<float>(RoundPlaces(value, 3)));
    ExpectShortest(RoundPlaces(value, 4));
  }
}

TEST(NumberText, ShortestTextOfEverySingleOfARangeAgreesWithTheLibrary) {
  for (const float start : {0.0001F, 0.99F, 511.9F, 1023.9F, 2047.9F, 8191.0F, 16383.0F}) {
    float value = start;
    for (int i = 0; i < 20000; ++i, value = std::nextafter(value, 1e9F)) ExpectShortest(value);
  }
}

RC_GTEST_PROP(NumberText, ReadsBackTheSame, (double value)) {
  RC_PRE(std::isfinite(value) && std::fabs(value) >= 0.0001);
  RC_ASSERT(LeadingNumber(NumberText(value, -1)) == value);
  const auto single = static_cast<float>(value);
  RC_PRE(std::isfinite(single));
  RC_ASSERT(static_cast<float>(LeadingNumber(NumberText(single, -1))) == single);
}

TEST(NumberText, AppendingLeavesWhatStandsBefore) {
  std::string line = "TABLE(500,";
  AppendNumber(line, -12.5F, -1);
  AppendNumber(line, 3.0, 2);
  EXPECT_EQ(line, "TABLE(500,-12.53.00");
}

TEST(LeadingNumber, StopsAtTheFirstCharacterThatCannotContinueIt) {
  EXPECT_EQ(LeadingNumber("12.5 mm"), 12.5);
  EXPECT_EQ(LeadingNumber("  \t-3,4"), -3);
  EXPECT_EQ(LeadingNumber("1.2.3"), 1.2);
  EXPECT_EQ(LeadingNumber("+7-2"), 7);
  EXPECT_EQ(LeadingNumber(".5"), 0.5);
  EXPECT_EQ(LeadingNumber("5."), 5);
}

TEST(LeadingNumber, KnowsTheExponentsEAndD) {
  EXPECT_EQ(LeadingNumber("1.5E3"), 1500);
  EXPECT_EQ(LeadingNumber("1.5d-3"), 0.0015);
  EXPECT_EQ(LeadingNumber("2E+2x"), 200);
  EXPECT_EQ(LeadingNumber("2E"), 2);
  EXPECT_EQ(LeadingNumber("2E+"), 2);
}

TEST(LeadingNumber, NoNumberGivesZero) {
  for (const char* text : {"", " ", "abc", "-", "--5", ".", "-.", "E5", "+-1"}) {
    EXPECT_EQ(LeadingNumber(text), 0) << text;
  }
}

TEST(LeadingNumber, GoesBeyondTheRangeOfADoubleWithoutHarm) {
  EXPECT_TRUE(std::isinf(LeadingNumber("1E999")));
  EXPECT_TRUE(std::isinf(LeadingNumber("1E99999999999999999999999")));
  EXPECT_TRUE(std::isinf(LeadingNumber(std::string(400, '9'))));
  EXPECT_TRUE(std::isinf(LeadingNumber("000" + std::string(400, '9'))));
  EXPECT_EQ(LeadingNumber("1E-999"), 0);
  EXPECT_EQ(LeadingNumber("1E-99999999999999999999999"), 0);
  EXPECT_EQ(LeadingNumber("0." + std::string(400, '0') + "1"), 0);
  EXPECT_EQ(LeadingNumber("0E999"), 0);
}

TEST(LeadingNumber, ReadsAsTheCLibraryDoes) {
  std::mt19937_64 random(17);
  for (int i = 0; i < 100000; ++i) {
    const double value = AnyNumber(random, i);
    if (!std::isfinite(value)) continue;
    const std::string text = i % 2 == 0 ? LibraryShortest(value) : PrintedText(value, i % 7);
    ASSERT_EQ(LeadingNumber(text), std::strtod(text.c_str(), nullptr)) << text;
  }
}

TEST(WholeNumbers, AreHeldWithinTheirRange) {
  EXPECT_EQ(TruncateToInt16(-2.9), -2);
  EXPECT_EQ(TruncateToInt16(40000), 32767);
  EXPECT_EQ(TruncateToInt16(-1e300), -32768);
  EXPECT_EQ(TruncateToInt32(1e10), 2147483647);
  EXPECT_EQ(TruncateToInt32(std::numeric_limits<double>::quiet_NaN()), 0);
  EXPECT_EQ(RoundToInt16(2.5), 2);
  EXPECT_EQ(RoundToInt16(-3.5), -4);
  EXPECT_EQ(RoundToInt32(2147483647.5), 2147483647);
}

TEST(WholeNumbers, AsText) {
  EXPECT_EQ(IntegerText(-12), "-12");
  EXPECT_EQ(LongText(123456), "123456");
  EXPECT_EQ(PadInteger(7, 3), "007");
  EXPECT_EQ(PadInteger(12345, 3), "345");
  EXPECT_EQ(PadInteger(-5, 3), "0-5");
  EXPECT_EQ(PadInteger(5, 0), "");
}

TEST(LeadingNumber, AnExponentBeyondAllSizeIsHugeOrNothing) {
  EXPECT_TRUE(std::isinf(LeadingNumber("666666D9223372036854775807")));
  EXPECT_EQ(LeadingNumber("666666E-9223372036854775807"), 0);
  EXPECT_TRUE(std::isinf(LeadingNumber("1E99999999999999999999999")));
}

}  // namespace
}  // namespace torvane::core
