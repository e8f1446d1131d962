// Every expression that the front end sends, and everything near it that is none.
#include <string>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "simulator/ControllerMemory.h"
#include "simulator/Expressions.h"
#include "simulator/Statements.h"

namespace torvane::simulator {
namespace {

struct ExpressionCase {
  const char* Text;
  double Value;
};

class GoodExpression : public ::testing::TestWithParam<ExpressionCase> {};

TEST_P(GoodExpression, HasItsValue) {
  ControllerMemory memory;
  memory.SetVariable(5, 7);
  memory.SetVariable(19, 16384);
  memory.WriteNamedValue(848, 12.5);
  const double row[] = {1.5, 2.5};
  memory.WriteTable(500, row);
  memory.SetAxis(AxisQuantity::Measured, 0, 100);
  memory.SetAxis(AxisQuantity::Demand, 1, 101);
  memory.SetAxis(AxisQuantity::EndOfMove, 4, 102);
  memory.SetAxis(AxisQuantity::FollowingError, 1, -0.25);
  const auto value = Evaluate(GetParam().Text, memory);
  ASSERT_TRUE(value.has_value());
  EXPECT_DOUBLE_EQ(*value, GetParam().Value);
}

INSTANTIATE_TEST_SUITE_P(
    Forms, GoodExpression,
    ::testing::Values(ExpressionCase{"12", 12}, ExpressionCase{"-3.5", -3.5},
                      ExpressionCase{".5", 0.5}, ExpressionCase{"+4", 4},
                      ExpressionCase{"VR(19)", 16384}, ExpressionCase{"vr( 19 )", 16384},
                      ExpressionCase{"VR(VR(5)-2)", 7}, ExpressionCase{"M848", 12.5},
                      ExpressionCase{"TABLE(501)", 2.5}, ExpressionCase{"MPOS AXIS(0)", 100},
                      ExpressionCase{"DPOS AXIS(1)", 101}, ExpressionCase{"ENDMOVE AXIS(4)", 102},
                      ExpressionCase{"FE AXIS(1)", -0.25}, ExpressionCase{"2+3*4", 14},
                      ExpressionCase{"(2+3)*4", 20}, ExpressionCase{"10-2-3", 5},
                      ExpressionCase{"8/4/2", 1}, ExpressionCase{"1 OR 6 AND 4", 5},
                      ExpressionCase{"VR(5) OR 32", 39}, ExpressionCase{"VR(19) AND 16384", 16384},
                      ExpressionCase{"-(2)", -2}, ExpressionCase{"0-32 OR 1", -31}));

class BadExpression : public ::testing::TestWithParam<const char*> {};

TEST_P(BadExpression, HasNone) {
  ControllerMemory memory;
  EXPECT_FALSE(Evaluate(GetParam(), memory).has_value());
}

INSTANTIATE_TEST_SUITE_P(Forms, BadExpression,
                         ::testing::Values("", " ", "VR", "VR(", "VR()", "VR(1", "VR(-1)",
                                           "VR(1024)", "VR(1.5)", "VR 1", "M", "M1000", "M84 8",
                                           "TABLE(-1)", "TABLE(65536)", "MPOS", "MPOS AXIS",
                                           "MPOS AXIS(5)", "MPOS AXIS(-1)", "POS AXIS(0)", "1/0",
                                           "1+", "1 2", "1 OR", "VR(1)=2", "(1", "1)", "1E5",
                                           "1.2.3", "5000000000 OR 1", "OP(8)", "\xff\xfe"));

TEST(Expressions, BracketsNestUpToALimit) {
  ControllerMemory memory;
  const auto nested = [](int depth) {
    return std::string(static_cast<std::size_t>(depth), '(') + "1" +
           std::string(static_cast<std::size_t>(depth), ')');
  };
  EXPECT_EQ(Evaluate(nested(31), memory), 1.0);
  EXPECT_FALSE(Evaluate(nested(32), memory).has_value());
  EXPECT_FALSE(Evaluate(nested(100000), memory).has_value());
}

TEST(Expressions, ANumberTooLargeIsNone) {
  ControllerMemory memory;
  EXPECT_FALSE(Evaluate("1" + std::string(400, '0'), memory).has_value());
  const std::string large = "1" + std::string(200, '0');
  EXPECT_FALSE(Evaluate(large + "*" + large, memory).has_value());
}

RC_GTEST_PROP(Expressions, WholeNumbersReadBack, (int value)) {
  ControllerMemory memory;
  RC_ASSERT(Evaluate(std::to_string(value), memory) == static_cast<double>(value));
}

RC_GTEST_PROP(Expressions, AnyTextIsAValueOrNone, (const std::string& text)) {
  ControllerMemory memory;
  const auto value = Evaluate(text, memory);
  if (value) RC_ASSERT(std::isfinite(*value));
}

// ---- statements ----

TEST(Statements, AssignVariables) {
  ControllerMemory memory;
  EXPECT_TRUE(CarryOut("VR(48)=10", memory));
  EXPECT_EQ(memory.Variable(48), 10);
  EXPECT_TRUE(CarryOut("VR(12)=0.01", memory));
  EXPECT_EQ(memory.Variable(12), 0.01);
  EXPECT_TRUE(CarryOut("vr ( 1 ) = -5", memory));
  EXPECT_EQ(memory.Variable(1), -5);
}

TEST(Statements, SetABitOfTheFrontEnd) {
  ControllerMemory memory;
  EXPECT_TRUE(CarryOut("VR(18)=VR(18) OR 1", memory));
  EXPECT_EQ(memory.Variable(18), 1);
  EXPECT_TRUE(CarryOut("VR(18)=VR(18) OR 1", memory));
  EXPECT_EQ(memory.Variable(18), 1);
}

TEST(Statements, SubtractingIsNoBitClear) {
  ControllerMemory memory;
  memory.SetVariable(17, 33);
  EXPECT_TRUE(CarryOut("VR(17)=VR(17)-32", memory));
  EXPECT_EQ(memory.Variable(17), 1);
  EXPECT_TRUE(CarryOut("VR(17)=VR(17)-32", memory));
  EXPECT_EQ(memory.Variable(17), -31) << "sent when the bit is off it corrupts the word";
}

TEST(Statements, OffsetsOfTheHead) {
  ControllerMemory memory;
  EXPECT_TRUE(CarryOut("M848=12.5", memory));
  EXPECT_TRUE(CarryOut("M849=0", memory));
  EXPECT_TRUE(CarryOut("M850=-1", memory));
  EXPECT_EQ(memory.NamedValue(848), 12.5);
  EXPECT_EQ(memory.NamedValue(850), -1);
}

TEST(Statements, OutputTakesTheVariablesValue) {
  ControllerMemory memory;
  memory.SetVariable(9, 1);
  EXPECT_TRUE(CarryOut("OP(8,VR(9))", memory));
  EXPECT_EQ(memory.Output(8), 1);
}

TEST(Statements, TableRowsWithAndWithoutABlank) {
  ControllerMemory memory;
  EXPECT_TRUE(CarryOut("TABLE(500,0,10.5,-20.25,0,0,0,0)", memory));
  EXPECT_EQ(memory.TableValue(501), 10.5);
  EXPECT_EQ(memory.TableValue(502), -20.25);
  EXPECT_TRUE(CarryOut("TABLE (20,-999)", memory));
  EXPECT_EQ(memory.TableValue(20), -999);
}

class BadStatement : public ::testing::TestWithParam<const char*> {};

TEST_P(BadStatement, IsRefusedAndChangesNothing) {
  ControllerMemory memory;
  const ControllerMemory before;
  EXPECT_FALSE(CarryOut(GetParam(), memory));
  for (int n = 0; n < VariableCount; ++n) EXPECT_EQ(memory.Variable(n), before.Variable(n));
  for (int n = 0; n < 1000; ++n) EXPECT_EQ(memory.TableValue(n), 0);
  for (int n = 0; n < OutputCount; ++n) EXPECT_EQ(memory.Output(n), 0);
  for (int n = 0; n < NamedValueCount; ++n) EXPECT_EQ(memory.NamedValue(n), 0);
}

INSTANTIATE_TEST_SUITE_P(Forms, BadStatement,
                         ::testing::Values("VR(1)", "VR(1)=", "VR(1024)=1", "VR(-1)=1", "VR(1)=1 2",
                                           "VR(1)==1", "VR=1", "M=1", "M1000=1", "M848",
                                           "TABLE(500)", "TABLE(500,)", "TABLE(500,1",
                                           "TABLE(500,1)x", "TABLE(-1,1)", "TABLE(65536,1)",
                                           "TABLE(65535,1,2)", "TABLE 500,1", "OP(8)", "OP(64,1)",
                                           "OP(-1,1)", "OP(8,1", "MPOS AXIS(0)=1", "M100", "P101=5",
                                           "G00 X1", "B1R", "B3R", "B1", "B1.R", "B.5R", "HALT",
                                           "?VR(1)", "=", "%", ">>"));

}  // namespace
}  // namespace torvane::simulator
