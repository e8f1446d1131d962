// Programs from the office and back, over two pseudo-terminals: one to the machine, one to the
// office.
#include <QElapsedTimer>
#include <QThread>
#include <filesystem>

#include "Programs.h"
#include "support/SourceTree.h"

namespace torvane::tests {
namespace {

constexpr int LongMs = 60000;

const std::string MainScreenUp =
    "patience 20000\n"
    "wait-closed SplashForm\n"
    "wait-form FrontEnd\n"
    "say UP\n";

const std::string ProgramHasCome = "wait-label FrontEnd ReceiveLamp RECEIVED\n";

/// Until the lamp of the program before has gone out.
const std::string LampOut = "pause 3500\n";

/// The program that came is named on the pads.
const std::string NameOnThePads =
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
    "wait-closed KeyboardForm\n";

/// Or found in the lists: its directory is the first one, and it is the only program there.
const std::string FindInTheLists =
    "key F1\n"
    "wait-form ProgramForm\n"
    "key L\n"
    "wait-form ProgListForm\n"
    "key D\n"
    "key Home\n"
    "key P\n"
    "key V\n"
    "key O\n"
    "key O\n"
    "wait-closed ProgListForm\n";

/// A line goes in after the sixth one, and the last but one becomes another.
const std::string EditTwoLines =
    "key E\n"
    "wait-form EditProgForm\n"
    "wait-label EditProgForm ProgLabel FROM-OFFICE\n"
    "key Down\nkey Down\nkey Down\nkey Down\nkey Down\n"
    "key I\n"
    "wait-form KeyboardForm\n"
    "text n25g00x150y220\n"
    "key Enter\n"
    "wait-closed KeyboardForm\n"
    "key N\n"
    "key Up\n"
    "key E\n"
    "wait-form KeyboardForm\n"
    "text n335g31t2=1\n"
    "key Enter\n"
    "wait-closed KeyboardForm\n"
    "wait-label EditProgForm ChangedLabel CHANGED\n"
    "key O\n"
    "wait-closed EditProgForm\n";

const std::string SelectAndRun =
    "key S\n"
    "wait-form SetupForm\n"
    "wait-closed ProgramForm\n"
    "key X\n"
    "wait-closed SetupForm\n"
    "say RUN\n"
    "wait-running\n"
    "wait-stopped\n"
    "pause 300\n";

/// The only program of the directory is marked and offered; the office says when.
const std::string Offer =
    "key F6\n"
    "wait-form FileHandleForm\n"
    "key S\n"
    "wait-form SendForm\n"
    "key Space\n"
    "key O\n"
    "wait-label SendForm SendLabel FROM-OFFICE\n";
const std::string SendBack = Offer +
                             "say OFFERED\n"
                             "wait-closed SendForm\n"
                             "key X\n"
                             "wait-closed FileHandleForm\n";

const std::string ShutDown =
    "no-warning\n"
    "key F12\n"
    "wait-form ShutdownForm\n"
    "key O\n";

std::string Replaced(std::string text, const std::string& what, const std::string& with) {
  const auto at = text.find(what);
  EXPECT_NE(at, std::string::npos) << what;
  return at == std::string::npos ? text : text.replace(at, what.size(), with);
}

class Transfers : public EndToEnd {
 protected:
  /// The office sends this file of the installation under the name AN-OFFICE/FROM-OFFICE.
  void SendFromOffice(const std::string& program) {
    Office.Type("directory AN-OFFICE");
    Office.Type("name FROM-OFFICE");
    Office.Type("chunk 100 5");
    Office.Type("send " + Place("installation/Programs/" + program));
  }
  /// Waits until the file of the installation holds that.
  void ExpectFile(const std::string& name, const std::string& text) {
    QElapsedTimer clock;
    clock.start();
    while (File(name) != text && clock.elapsed() < LongMs) QThread::msleep(20);
    EXPECT_EQ(File(name), text) << name;
  }
};

TEST_F(Transfers, AProgramOfTheOfficeIsSelectedAndRun) {
  StartMachine(20);
  StartOffice();
  StartConsole(MainScreenUp + ProgramHasCome + NameOnThePads + SelectAndRun + ShutDown);
  ASSERT_TRUE(Console.WaitFor("UP", LongMs));
  SendFromOffice("SHOP/STAR.prg");
  ASSERT_TRUE(Office.WaitFor("sent", LongMs));
  ASSERT_TRUE(Console.WaitFor("RUN", LongMs));
  Machine.Type("start");
  EXPECT_EQ(Console.WaitForEnd(LongMs), 0);

  EXPECT_EQ(File("Programs/AN-OFFICE/FROM-OFFICE.prg"), File("Programs/SHOP/STAR.prg"));
  EXPECT_EQ(File("Messages/Receive.hlp"), "FROM-OFFICE : AN-OFFICE\r\n");
  EXPECT_EQ(File("Receive.tmp"), "(missing)");
  EXPECT_EQ(File("Service/Errors.txt"), "(missing)");
}

TEST_F(Transfers, AProgramIsReceivedFoundEditedRunAndSentBack) {
  StartMachine(20);
  StartOffice();
  StartConsole(MainScreenUp + ProgramHasCome + FindInTheLists + EditTwoLines + SelectAndRun +
               SendBack + LampOut + "say BACK\n" + ProgramHasCome + ShutDown);
  ASSERT_TRUE(Console.WaitFor("UP", LongMs));
  SendFromOffice("SHOP/STAR.prg");
  ASSERT_TRUE(Console.WaitFor("RUN", LongMs));
  Machine.Type("start");
  ASSERT_TRUE(Console.WaitFor("OFFERED", LongMs));
  Office.Type("ready");
  ASSERT_TRUE(Office.WaitFor("received", LongMs));

  std::string edited =
      Replaced(File("Programs/SHOP/STAR.prg"), "N30 G31", "N25G00X150Y220\r\nN30 G31");
  edited = Replaced(edited, "N330 G31 T2=1", "N335G31T2=1");
  const std::string framed = std::string(20, '\0') + edited + "\x03";
  EXPECT_EQ(File("Programs/AN-OFFICE/FROM-OFFICE.prg"), edited);
  EXPECT_EQ(Directory.Get("office.txt"), framed) << "what the office holds";

  // Once more the way here: it comes as it went, without a header, and is a new program.
  ASSERT_TRUE(Console.WaitFor("BACK", LongMs));
  Office.Type("return");
  EXPECT_EQ(Console.WaitForEnd(LongMs), 0);
  EXPECT_EQ(File("Programs/AN-OFFICE/New Program 1.prg"), edited);
  EXPECT_EQ(File("Service/Errors.txt"), "(missing)");
  // It was this program that ran.
  EXPECT_EQ(File("Actvprg1.prg"), edited);
  EXPECT_EQ(File("Actvprg1.btc"), "0\r\n0\r\n0\r\n1\r\n0\r\n******\r\n");
}

TEST_F(Transfers, ACablePulledInMidProgramIsFoundAgainAndTheOperatorClearsTheHalf) {
  StartMachine(20);
  StartOffice();
  StartConsole(MainScreenUp +
               "wait-label FrontEnd ReceiveLamp RECEIVING\n"
               "say HALF\n"
               "pause 4000\n"
               "key F6\n"
               "wait-form FileHandleForm\n"
               "key S\n"
               "wait-form SendForm\n"
               "key C\n"
               "wait-closed SendForm\n"
               "say AGAIN\n" +
               ProgramHasCome + ShutDown);
  ASSERT_TRUE(Console.WaitFor("UP", LongMs));
  Office.Type("stop-after 300");
  SendFromOffice("SHOP/STAR.prg");
  ASSERT_TRUE(Console.WaitFor("HALF", LongMs));
  Office.Kill();
  StartOffice();
  ASSERT_TRUE(Console.WaitFor("AGAIN", LongMs));
  SendFromOffice("SHOP/GASKET.prg");
  EXPECT_EQ(Console.WaitForEnd(LongMs), 0);
  EXPECT_EQ(File("Programs/AN-OFFICE/FROM-OFFICE.prg"), File("Programs/SHOP/GASKET.prg"));
  EXPECT_EQ(File("Messages/Receive.hlp"), "FROM-OFFICE : AN-OFFICE\r\n");
}

TEST_F(Transfers, ACablePulledWhileSendingLeavesTheConsoleAlive) {
  StartMachine(20);
  StartOffice();
  StartConsole(MainScreenUp +
               "key F6\n"
               "wait-form FileHandleForm\n"
               "key S\n"
               "wait-form SendForm\n"
               "key Space\n"
               "key Down\n"
               "key Space\n"
               "key O\n"
               "wait-label SendForm SendLabel BRACKET-40\n"
               "key F\n"
               "wait-label SendForm SendLabel GASKET\n"
               "say OFFERED\n"
               "pause 1500\n"
               "key F\n"
               "wait-closed SendForm\n"
               "key X\n"
               "wait-closed FileHandleForm\n"
               "pause 500\n" +
               ShutDown);
  ASSERT_TRUE(Console.WaitFor("OFFERED", LongMs));
  Office.Kill();
  EXPECT_EQ(Console.WaitForEnd(LongMs), 0);
  EXPECT_NE(Directory.Get("office.txt").find(File("Programs/SHOP/BRACKET-40.prg")),
            std::string::npos);
}

TEST_F(Transfers, WithTheSimulatedOfficeAProgramGoesThereAndBack) {
  Directory.Put("keys.txt", MainScreenUp +
                                "office directory AN-OFFICE\n"
                                "office name FROM-OFFICE\n"
                                "office send Programs\\SHOP\\STAR.prg\n" +
                                ProgramHasCome + FindInTheLists + EditTwoLines +
                                "key X\n"
                                "wait-closed ProgramForm\n" +
                                Offer +
                                "office ready\n"
                                "wait-closed SendForm\n"
                                "key X\n" +
                                LampOut + "office return\n" + ProgramHasCome + "office state\n" +
                                ShutDown);
  std::filesystem::copy_file(SourceTree() / "examples" / "transfer" / "Office.cms",
                             Place("installation/Control.cms"),
                             std::filesystem::copy_options::overwrite_existing);
  Console.Start(TORVANE_PROGRAM, {"--simulate", "--keys", Place("keys.txt"), "--window", "1024x768",
                                  Place("installation")});
  EXPECT_EQ(Console.WaitForEnd(LongMs), 0) << Console.Errors();
  EXPECT_NE(Console.Output().find("office: "), std::string::npos);
  EXPECT_EQ(File("Programs/AN-OFFICE/New Program 1.prg"),
            File("Programs/AN-OFFICE/FROM-OFFICE.prg"));
}

TEST_F(Transfers, FaultsOfTheDiskReachTheSimulatedConsole) {
  Directory.Put("keys.txt", MainScreenUp +
                                "key F1\n"
                                "wait-form ProgramForm\n"
                                "key P\n"
                                "wait-form KeyboardForm\n"
                                "text gasket\n"
                                "key Enter\n"
                                "wait-closed KeyboardForm\n"
                                "key E\n"
                                "wait-form EditProgForm\n"
                                "key D\n"
                                "machine storage read-only .\\Programs\n"
                                "key O\n"
                                "wait-warning write-protected\n"
                                "key O\n"
                                "wait-closed WarningForm\n"
                                "wait-form EditProgForm\n"
                                "machine storage good\n"
                                "machine storage full-after 10 .\\Programs\n"
                                "key O\n"
                                "wait-warning full\n"
                                "key O\n"
                                "wait-closed WarningForm\n"
                                "machine storage good\n"
                                "key O\n"
                                "wait-closed EditProgForm\n"
                                "key X\n"
                                "wait-closed ProgramForm\n"
                                // A drive that answers at the second test.
                                "key F6\n"
                                "wait-form FileHandleForm\n"
                                "key 5\n"
                                "wait-form FileForm\n"
                                "key Space\n"
                                "key Tab\n"
                                "key End\n"
                                "machine storage ready-at 2 A:\n"
                                "key O\n"
                                "wait-warning To \"A: [Floppy Disk]\" !\n"
                                "key O\n"
                                "wait-warning Disc Not Ready !\n"
                                "key O\n"
                                "wait-warning 1 Program Copied !\n"
                                "key O\n"
                                "wait-closed FileForm\n" +
                                ShutDown);
  Directory.MakeDirectory("floppy");
  Console.Start(TORVANE_PROGRAM, {"--simulate", "--keys", Place("keys.txt"), "--window", "1024x768",
                                  "--drive", "A=" + Place("floppy"), Place("installation")});
  const std::string whole = File("Programs/SHOP/GASKET.prg");
  EXPECT_EQ(Console.WaitForEnd(LongMs), 0) << Console.Errors();
  EXPECT_EQ(File("Programs/SHOP/GASKET.prg"), whole.substr(whole.find("\r\n") + 2));
  EXPECT_EQ(Directory.Get("floppy/BRACKET-40.prg"), File("Programs/SHOP/BRACKET-40.prg"));
}

}  // namespace
}  // namespace torvane::tests
