// The arithmetic of the language and the plain readers.
#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "core/General.h"

namespace torvane::core {
namespace {

double ValueOf(std::string_view expression) { return Calculate(expression).Value; }

TEST(Calculate, HasNoPrecedence) {
  EXPECT_EQ(ValueOf("2+3*4"), 20);
  EXPECT_EQ(ValueOf("10+5*2"), 30);
  EXPECT_EQ(ValueOf("2+3*4-1/2"), 9.5);
}

TEST(Calculate, TellsASignFromAnOperator) {
  EXPECT_EQ(ValueOf("-3-1"), -4);
  EXPECT_EQ(ValueOf("5*-3"), -15);
  EXPECT_EQ(ValueOf("5--3"), 8);
  EXPECT_EQ(ValueOf("(2+3)-4"), 1);
  EXPECT_EQ(ValueOf("5-(1-3)"), 7);
}

TEST(Calculate, APlusIsAnOperatorWhereverItStandsAndTheFirstThatWaitsIsApplied) {
  EXPECT_EQ(ValueOf("+5-3"), 8);
  EXPECT_EQ(ValueOf("5*+3-1"), 16);
  EXPECT_EQ(ValueOf("+5-3*2"), 6) << "5 + 3, then - 2";
  EXPECT_EQ(ValueOf("5*+3"), 15);
  EXPECT_EQ(ValueOf("5-+3"), 2);
  EXPECT_EQ(ValueOf("(+5-3)*2"), 16);
}

TEST(Calculate, AnOperatorThatNeverGetsASecondNumberDoesNothing) {
  EXPECT_EQ(ValueOf("*5"), 5);
  EXPECT_EQ(ValueOf("+5"), 5);
  EXPECT_EQ(ValueOf("5+"), 5);
  EXPECT_EQ(ValueOf("/5"), 5);
}

TEST(Calculate, ReadsWhatIsNoNumberAsTheTextLeads) {
  EXPECT_EQ(ValueOf("--5"), 0);
  EXPECT_EQ(ValueOf("1.2.3+1"), 2.2);
  EXPECT_EQ(ValueOf("."), 0);
  EXPECT_EQ(ValueOf("7-"), 7);
}

TEST(Calculate, DropsEveryOtherCharacter) { EXPECT_EQ(ValueOf(" 1 2 x+a3"), 15); }

TEST(Calculate, WorksBracketsFromTheInside) {
  EXPECT_EQ(ValueOf("2*(3+4)"), 14);
  EXPECT_EQ(ValueOf("((1+2)*(3+4))-1"), 20);
  EXPECT_EQ(ValueOf("(5)"), 5);
  EXPECT_EQ(ValueOf("()"), 0);
}

TEST(Calculate, ABracketIsReplacedByItsTextAndNothingElse) {
  EXPECT_EQ(ValueOf("2(3)"), 23);
  EXPECT_EQ(ValueOf("(1)(2)"), 12);
}

TEST(Calculate, ABracketKeepsOnlyWhatItsTextShows) {
  EXPECT_EQ(ValueOf("(1/100000)*100000"), 0);  // the inside shows as "0"
  EXPECT_EQ(ValueOf("1/100000*100000"), 1);
  EXPECT_EQ(ValueOf("(10000*10000*10000*10000*10000)/10000"), 1e16);
}

TEST(Calculate, ADivisionByZeroGivesTheLastSpanThatCameToItsEnd) {
  EXPECT_EQ(ValueOf("(2+3)*4/0"), 5);
  EXPECT_EQ(ValueOf("(7-1)*(2/0)"), 0) << "the last bracket is worked out first";
  EXPECT_EQ(ValueOf("(2/0)*(7-1)"), 6);
  EXPECT_TRUE(Calculate("(2+3)*4/0").ArithmeticError);
}

TEST(Calculate, ADivisionByZeroBeforeAnySpanHasEndedGivesNothing) {
  for (const char* text : {"9/0", "7+1/0*3", "2*(1/0)"}) {
    const Calculation result = Calculate(text);
    EXPECT_TRUE(result.ArithmeticError) << text;
    EXPECT_TRUE(result.Empty) << text;
    EXPECT_EQ(result.Value, 0) << text;
  }
}

TEST(Calculate, UnbalancedBracketsGiveTheValueInHandWhichIsNone) {
  for (const char* text : {"(1+2", "1+2)", "((3)", ")1("}) {
    const Calculation result = Calculate(text);
    EXPECT_TRUE(result.ArithmeticError) << text;
    EXPECT_EQ(result.Value, 0) << text;
  }
}

TEST(Calculate, NothingIsEmpty) {
  EXPECT_TRUE(Calculate("").Empty);
  EXPECT_TRUE(Calculate("+*").Empty);
  EXPECT_FALSE(Calculate("0").Empty);
}

TEST(Calculate, DeepBracketsComeOut) {
  constexpr int Depth = 20000;
  EXPECT_EQ(ValueOf(std::string(Depth, '(') + "3" + std::string(Depth, ')')), 3);
}

RC_GTEST_PROP(Calculate, AnyTextGivesAResult, ()) {
  const auto text =
      *rc::gen::container<std::string>(rc::gen::elementOf(std::string("0123456789.+-*/()- ")));
  const Calculation result = Calculate(text);
  if (result.Empty) RC_ASSERT(result.Value == 0);
}

RC_GTEST_PROP(Calculate, GoesFromLeftToRight, ()) {
  const auto operands =
      *rc::gen::nonEmpty(rc::gen::container<std::vector<int>>(rc::gen::inRange(-99, 100)));
  std::string text = std::to_string(operands[0]);
  double expected = operands[0];
  for (std::size_t i = 1; i < operands.size(); ++i) {
    const char operation = *rc::gen::elementOf(std::string("+-*"));
    const double operand = operands[i];
    text += operation + std::to_string(operands[i]);
    expected = operation == '+'   ? expected + operand
               : operation == '-' ? expected - operand
                                  : expected * operand;
  }
  RC_ASSERT(ValueOf(text) == expected);
}

TEST(GetPlainValue, TakesAPlainNumber) {
  EXPECT_EQ(GetPlainValue("X 12.5 Y3", "X").Value, 12.5);
  EXPECT_EQ(GetPlainValue("SYS(1)=5", "SYS(1)").Found, false);
  EXPECT_EQ(GetPlainValue("X-3", "X").Value, -3);
}

TEST(GetPlainValue, EvaluatesNothing) {
  EXPECT_EQ(GetPlainValue("X10+5", "X").Value, 10);
  EXPECT_EQ(GetPlainValue("X(3)", "X").Value, 0);
  EXPECT_TRUE(GetPlainValue("X(3)", "X").Found);
}

TEST(GetPlainValue, ABlankBehindTheFirstCharacterEndsIt) {
  EXPECT_EQ(GetPlainValue("X1 2", "X").Value, 1);
  EXPECT_EQ(GetPlainValue("X  2 3", "X").Value, 2);
  EXPECT_FALSE(GetPlainValue("X   ", "X").Found);
}

TEST(GetPlainValue, TheMarkerCountsAsNotFound) {
  EXPECT_FALSE(GetPlainValue("X-999", "X").Found);
  EXPECT_EQ(GetPlainValue("Y1", "X").Value, NoValue);
  EXPECT_EQ(GetPlainValue("XY1", "X").Value, NoValue);
}

TEST(GetPlainInteger, TakesDigitsOnly) {
  EXPECT_EQ(GetPlainInteger("N 12.5", "N").Value, 12);
  EXPECT_EQ(GetPlainInteger("N1 2", "N").Value, 1);
  EXPECT_EQ(GetPlainInteger("N+1+2", "N").Value, 12);
  EXPECT_EQ(GetPlainInteger("N-4", "N").Value, -4);
  EXPECT_FALSE(GetPlainInteger("NX", "N").Found);
  EXPECT_FALSE(GetPlainInteger("X1", "N").Found);
}

TEST(GetPlainInteger, TheMarkerCountsAsFound) {
  const WordValue value = GetPlainInteger("N-999", "N");
  EXPECT_TRUE(value.Found);
  EXPECT_EQ(value.Value, -999);
}

TEST(ReadDigits, KeepsTheFirstMinusWhereItStands) {
  EXPECT_EQ(ReadDigits("12-3").Value, 12);
  EXPECT_EQ(ReadDigits("-1-2").Value, -12);
  EXPECT_EQ(ReadDigits("1-2-3").Value, 1);
  EXPECT_EQ(ReadDigits("- 5").Value, -5);
  EXPECT_EQ(ReadDigits("-").Value, 0);
  EXPECT_TRUE(ReadDigits("-").Found);
  EXPECT_FALSE(ReadDigits("+ ").Found);
}

}  // namespace
}  // namespace torvane::core
