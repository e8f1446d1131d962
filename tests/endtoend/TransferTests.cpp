// Programs from the office and back, over two pseudo-terminals: one to the machine, one to the
// office.
#include "Programs.h"

namespace torvane::tests {
namespace {

constexpr int LongMs = 60000;

/// The program that came is named on the pads, selected and run.
const std::string SelectAndRun =
    "key F1\n"
    "wait-form ProgramForm\n"
    "key D\n"
    "wait-form KeyboardForm\n"
    "text an-office\n"
    "key Enter\n"
    "wait-closed KeyboardForm\n"
    "key P\n"
    "wait-form KeyboardForm\n"
    "text from-office\n"
    "key Enter\n"
    "wait-closed KeyboardForm\n"
    "key S\n"
    "wait-form SetupForm\n"
    "wait-closed ProgramForm\n"
    "key X\n"
    "wait-closed SetupForm\n"
    "say RUN\n"
    "wait-running\n"
    "wait-stopped\n"
    "pause 300\n";

TEST_F(EndToEnd, AProgramOfTheOfficeIsSelectedAndRun) {
  StartMachine(20);
  StartOffice();
  StartConsole("patience 20000\nwait-closed SplashForm\nwait-form FrontEnd\nsay UP\npause 2000\n" +
               SelectAndRun + "no-warning\nkey F12\nwait-form ShutdownForm\nkey O\n");
  ASSERT_TRUE(Console.WaitFor("UP", LongMs));
  Office.Type("directory AN-OFFICE");
  Office.Type("name FROM-OFFICE");
  Office.Type("chunk 100 5");
  Office.Type("send " + Place("installation/Programs/SHOP/STAR.prg"));
  ASSERT_TRUE(Office.WaitFor("sent", LongMs));
  ASSERT_TRUE(Console.WaitFor("RUN", LongMs));
  Machine.Type("start");
  EXPECT_EQ(Console.WaitForEnd(LongMs), 0);

  const std::string original = File("Programs/SHOP/STAR.prg");
  EXPECT_EQ(File("Programs/AN-OFFICE/FROM-OFFICE.prg"), original);
  EXPECT_EQ(File("Messages/Receive.hlp"), "FROM-OFFICE : AN-OFFICE\r\n");
  EXPECT_EQ(File("Receive.tmp"), "(missing)");
  EXPECT_EQ(File("Service/Errors.txt"), "(missing)");
}

}  // namespace
}  // namespace torvane::tests
