#include <string>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "core/General.h"
#include "partprogram/WordValues.h"

using namespace torvane;
using namespace torvane::partprogram;

namespace {

Parameters Some() {
  Parameters parameters;
  parameters.Values[1] = 1.5;
  parameters.Values[3] = 4;
  parameters.Values[10] = 5;
  parameters.Values[12] = 12.25;
  parameters.Values[20] = -7;
  parameters.Values[99] = 99;
  return parameters;
}

double Value(std::string_view block, std::string_view key) {
  return GetWordValue(block, key, Some()).Value;
}
bool Found(std::string_view block, std::string_view key) {
  return GetWordValue(block, key, Some()).Found;
}
ReadFault FaultOf(std::string_view block, std::string_view key) {
  ReadFault fault = ReadFault::None;
  (void)GetWordValue(block, key, Some(), &fault);
  return fault;
}

TEST(GetWordValue, AnotherLetterStopsTheWalk) {
  EXPECT_EQ(Value("X10Y20", "X"), 10);
  EXPECT_EQ(Value("X10Y20", "Y"), 20);
  EXPECT_EQ(Value("X10.5,Y20", "X"), 10.5);
}

TEST(GetWordValue, AnAbsentLetterIsNotFound) {
  EXPECT_FALSE(Found("X10Y20", "Z"));
  EXPECT_EQ(Value("X10Y20", "Z"), -999);
}

TEST(GetWordValue, ALetterWithoutAValueIsNotFound) {
  EXPECT_FALSE(Found("XY20", "X"));
  EXPECT_EQ(Value("XY20", "X"), -999);
}

TEST(GetWordValue, TheMarkerItselfCountsAsNotFound) {
  EXPECT_FALSE(Found("X-999", "X"));
  EXPECT_EQ(Value("X-999", "X"), -999);
  EXPECT_FALSE(Found("X-1000+1", "X"));
  EXPECT_TRUE(Found("X-999.5", "X"));
}

TEST(GetWordValue, SkipsEachRThatBeginsRound) {
  EXPECT_EQ(Value("ROUND(2.5)R4", "R"), 4);
  EXPECT_EQ(Value("XROUND(2.5)YROUND(3.5)R-6", "R"), -6);
  EXPECT_FALSE(Found("XROUND(2.5)", "R"));
}

TEST(GetWordValue, WorksFromTheLeftWithoutPrecedence) {
  EXPECT_EQ(Value("X10+5*2", "X"), 30);
  EXPECT_EQ(Value("X2+3*4", "X"), 20);
  EXPECT_EQ(Value("X2+(3*4)", "X"), 14);
}

TEST(GetWordValue, AMinusIsASignInFrontAndAnOperatorBehindADigit) {
  EXPECT_EQ(Value("X-3-1", "X"), -4);
  EXPECT_EQ(Value("X5*-2", "X"), -10);
}

TEST(GetWordValue, ReadsParametersByOneOrTwoDigits) {
  EXPECT_EQ(Value("XP3", "X"), 4);
  EXPECT_EQ(Value("X P3 + 1", "X"), 5);
  EXPECT_EQ(Value("XP12YP3", "X"), 12.25);
  EXPECT_EQ(Value("XP3*P12", "X"), 49);
  EXPECT_EQ(Value("XP99", "X"), 99);
  EXPECT_EQ(Value("XP0", "X"), 0);
  EXPECT_EQ(Value("XP3+5", "X"), 9);
}

TEST(GetWordValue, AParameterGoesInWithThreePlaces) {
  Parameters parameters;
  parameters.Values[1] = 2.0 / 3.0;
  EXPECT_EQ(GetWordValue("XP1", "X", parameters).Value, 0.667);
  parameters.Values[1] = 0.0004;
  EXPECT_EQ(GetWordValue("XP1", "X", parameters).Value, 0);
}

TEST(GetWordValue, ANegativeParameterBehindAnOperatorIsASignedNumber) {
  EXPECT_EQ(Value("X10+P20", "X"), 3);
  EXPECT_EQ(Value("X10-P20", "X"), 17);
}

TEST(GetWordValue, AnAssignmentEndsTheWalk) {
  EXPECT_FALSE(Found("XP3=2", "X"));
  EXPECT_EQ(Value("X7P3=2", "X"), 7);
  EXPECT_EQ(Value("X7P12=2", "X"), 7);
}

TEST(GetWordValue, ParameterHundredReadsAsTenAndANought) {
  EXPECT_EQ(Value("XP100", "X"), 5);  // "5.000" and "0"
}

TEST(GetWordValue, AnAssignmentForTheRestartEndsTheWalkLikeAnyOther) {
  for (const char* text : {"X7P101=2", "X7P105=7", "X7P109=1", "X7P110=3", "X7 P105=7"}) {
    EXPECT_EQ(Value(text, "X"), 7) << text;
    EXPECT_EQ(FaultOf(text, "X"), ReadFault::None) << text;
  }
  EXPECT_FALSE(Found("XP105=2", "X"));
  for (const char* text : {"X7P111=2", "X7P120=2", "X7P105", "X7P1055=2"}) {
    EXPECT_EQ(FaultOf(text, "X"), ReadFault::ParameterNumber) << text;
  }
}

TEST(GetWordValue, ParametersThatDoNotExistAreAFault) {
  EXPECT_EQ(FaultOf("XP101", "X"), ReadFault::ParameterNumber);
  EXPECT_EQ(FaultOf("XP999", "X"), ReadFault::ParameterNumber);
  EXPECT_EQ(FaultOf("XP-5", "X"), ReadFault::ParameterNumber);
  EXPECT_EQ(FaultOf("X10PQ", "X"), ReadFault::ParameterNumber);
  EXPECT_EQ(FaultOf("X10P", "X"), ReadFault::ParameterNumber);
  EXPECT_EQ(FaultOf("XP99", "X"), ReadFault::None);
}

TEST(GetWordValue, ADivisionByZeroIsNoFaultOfTheBlock) {
  EXPECT_EQ(Value("X9/0", "X"), 0);
  EXPECT_TRUE(Found("X9/0", "X"));
  EXPECT_EQ(Value("X(2+3)*4/0", "X"), 5);
  EXPECT_EQ(FaultOf("X9/0", "X"), ReadFault::None);
}

TEST(GetWordValue, ASignOfPlusIsAnOperator) {
  EXPECT_EQ(Value("X+5-3", "X"), 8);
  EXPECT_EQ(Value("X5*+3-1", "X"), 16);
  EXPECT_EQ(Value("X+5", "X"), 5);
}

TEST(GetWordValue, RoundsHalfToEven) {
  EXPECT_EQ(Value("XROUND(2.5)", "X"), 2);
  EXPECT_EQ(Value("XROUND(3.5)", "X"), 4);
  EXPECT_EQ(Value("XROUND(-2.5)", "X"), -2);
  EXPECT_EQ(Value("X1+ROUND(2.6)*2", "X"), 8);
}

TEST(GetWordValue, TruncatesTowardZero) {
  EXPECT_EQ(Value("XTRUNC(2.9)", "X"), 2);
  EXPECT_EQ(Value("XTRUNC(-2.9)", "X"), -2);
  EXPECT_EQ(Value("XTRUNC(P12)+0.5", "X"), 12.5);
}

TEST(GetWordValue, FunctionsNest) {
  EXPECT_EQ(Value("XROUND(TRUNC(2.9)+(0.5*1))", "X"), 2);
  EXPECT_EQ(Value("XTRUNC(ROUND(ROUND(7.6)/3)*1.5)", "X"), 4);
}

TEST(GetWordValue, ARoundedNumberThatSixteenBitsDoNotHoldIsAFault) {
  EXPECT_EQ(FaultOf("XROUND(32767.4)", "X"), ReadFault::None);
  EXPECT_EQ(FaultOf("XROUND(32768)", "X"), ReadFault::NumberRange);
}

TEST(GetWordValue, EndlessNestingIsAFaultAndNoCrash) {
  std::string block = "X";
  for (int i = 0; i < 20000; ++i) block += "ROUND(";
  EXPECT_EQ(FaultOf(block, "X"), ReadFault::NestedTooDeep);
}

TEST(GetWordValue, ADivisionByZeroLeavesTheLastSpanThatCameToItsEnd) {
  EXPECT_EQ(Value("X10/0", "X"), 0);
  EXPECT_EQ(Value("X10+5/0+3", "X"), 0);
  EXPECT_EQ(Value("X(2+3)*4/0", "X"), 5);
}

TEST(GetWordValue, UnbalancedBracketsLeaveTheValueInHand) {
  EXPECT_EQ(Value("X(10", "X"), 0);
  EXPECT_EQ(Value("X10)", "X"), 0);
  EXPECT_EQ(Value("XROUND(2.5", "X"), 0);
  EXPECT_EQ(FaultOf("XROUND(", "X"), ReadFault::None);
}

TEST(GetWordValue, ABracketLosesWhatItsTextLoses) {
  EXPECT_EQ(Value("X(0.00001)*100000", "X"), 0);
  EXPECT_EQ(Value("X0.00001*100000", "X"), 1);
}

TEST(GetWordValue, AZeroHasNoSign) { EXPECT_FALSE(std::signbit(Value("X-0", "X"))); }

// The quick way for a number by itself must be the long way's value to the bit.
RC_GTEST_PROP(GetWordValue, APlainNumberHasTheValueOfItsText, ()) {
  const auto whole = *rc::gen::inRange<std::int64_t>(-99999999, 99999999);
  const int places = *rc::gen::inRange(0, 8);
  std::string text = std::to_string(std::abs(whole));
  if (places > 0) {
    if (static_cast<int>(text.size()) <= places) {
      text.insert(0, static_cast<std::size_t>(places) + 1 - text.size(), '0');
    }
    text.insert(text.size() - static_cast<std::size_t>(places), ".");
  }
  if (whole < 0) text.insert(0, "-");
  const auto read = GetWordValue("X" + text + "Y1", "X", Parameters{});
  const double expected = core::Calculate(text).Value;
  RC_ASSERT(read.Value == (expected == -999 ? -999 : expected));
  RC_ASSERT(read.Value == std::strtod(text.c_str(), nullptr));
}

RC_GTEST_PROP(GetWordValue, AnyTextGivesAValueAndNoFaultOfTheMachine, ()) {
  const auto text = *rc::gen::container<std::string>(
      rc::gen::elementOf(std::string("0123456789.+-*/()PRXYT =ROUNDTRUNC(\x01\xFF")));
  for (const std::string_view key : {"X", "R", "P", "", "1="}) {
    (void)GetWordValue(text, key, Some());
    (void)GetWordInteger(text, key);
    (void)GetStaticValue(text, key, Some());
  }
}

TEST(GetWordInteger, TakesDigitsOnly) {
  EXPECT_EQ(GetWordInteger("S12A0", "S").Value, 12);
  EXPECT_EQ(GetWordInteger("S 1 2", "S").Value, 1);
  EXPECT_EQ(GetWordInteger("S+12.7", "S").Value, 12);
  EXPECT_EQ(GetWordInteger("S1+2", "S").Value, 12);
}

TEST(GetWordInteger, KeepsTheFirstMinusWhereverItStands) {
  EXPECT_EQ(GetWordInteger("S-5", "S").Value, -5);
  EXPECT_EQ(GetWordInteger("S--5", "S").Value, -5);
  EXPECT_EQ(GetWordInteger("S-5-3", "S").Value, -53);
  EXPECT_EQ(GetWordInteger("S5-3", "S").Value, 5);
}

TEST(GetWordInteger, NothingAndTheMarkerAreNotFound) {
  EXPECT_FALSE(GetWordInteger("A12", "S").Found);
  EXPECT_FALSE(GetWordInteger("SA", "S").Found);
  EXPECT_FALSE(GetWordInteger("S-999", "S").Found);
  EXPECT_EQ(GetWordInteger("SA", "S").Value, -999);
}

TEST(GetWordInteger, SkipsTheRoundRule) { EXPECT_EQ(GetWordInteger("ROUND(1)R4", "R").Value, 4); }

TEST(GetWordInteger, ANumberBeyondSixteenBitsIsAFault) {
  ReadFault fault = ReadFault::None;
  EXPECT_EQ(GetWordInteger("S32767", "S", &fault).Value, 32767);
  EXPECT_EQ(fault, ReadFault::None);
  EXPECT_EQ(GetWordInteger("S" + std::string(500, '9'), "S", &fault).Value, 32767);
  EXPECT_EQ(fault, ReadFault::NumberRange);
}

TEST(GetStaticValue, NotFoundYieldsZero) {
  const auto value = GetStaticValue("X10", "I", Some());
  EXPECT_FALSE(value.Found);
  EXPECT_EQ(value.Value, 0);
}

TEST(GetStaticValue, ReadsP0AndP12ToP99OfTheFixedParameters) {
  EXPECT_EQ(GetStaticValue("IP12", "I", Some()).Value, 12.25);
  EXPECT_EQ(GetStaticValue("IP99", "I", Some()).Value, 99);
  EXPECT_EQ(GetStaticValue("IP0+2", "I", Some()).Value, 2);
}

TEST(GetStaticValue, AnyOtherParameterEndsTheScan) {
  EXPECT_EQ(GetStaticValue("I5*P3", "I", Some()).Value, 5);
  EXPECT_FALSE(GetStaticValue("IP11", "I", Some()).Found);
}

}  // namespace
