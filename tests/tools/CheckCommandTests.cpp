#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <sstream>

#include <gtest/gtest.h>

#include "CheckShop.h"
#include "partprogram/DrawRecord.h"

namespace torvane::tools {
namespace {

namespace fs = std::filesystem;

constexpr const char* Faulty =
    "! SHEET : X500 Y300\r\nG71 G90\r\nG00 X10 Y10\r\nG31 T2=3\r\nG03 X20 Y10 R1\r\nM30\r\n";

TEST(Check, OfAGoodProgramSaysWhatItIs) {
  Shop shop;
  EXPECT_EQ(shop.Run({"JOBS", "PLAIN"}), ExitStatus::Good);
  EXPECT_TRUE(shop.Says("JOBS\\PLAIN: good\n")) << shop.Out.str();
  EXPECT_TRUE(shop.Says("Copper"));
  EXPECT_TRUE(shop.Says("500 x 300 mm"));
  EXPECT_TRUE(shop.Says("80, 380"));
  EXPECT_TRUE(shop.Says("2 Line Profile, 1 Arc Profile"));
  EXPECT_TRUE(shop.Says("elements        3\n"));
  // 40 and 30 straight, and a quarter of a circle of 20.
  EXPECT_TRUE(shop.Says("101.4 mm cut")) << shop.Out.str();
  EXPECT_TRUE(shop.Says("1 program: 1 good, 0 refused\n"));
  EXPECT_EQ(shop.Errors.str(), "");
}

TEST(Check, OfARefusedProgramTellsEachErrorWithItsBlock) {
  Shop shop;
  shop.Put("FAULTY", Faulty);
  EXPECT_EQ(shop.Run({"JOBS", "FAULTY"}), ExitStatus::Refused);
  EXPECT_TRUE(shop.Says("FAULTY: refused, Can Not Be Selected Due To Errors in Code !"));
  EXPECT_TRUE(shop.Says("CRITICAL        Non-Interpolated Arc (Invalid R)\n"));
  EXPECT_TRUE(shop.Says("block 5: G03 X20 Y10 R1\n")) << shop.Out.str();
  EXPECT_FALSE(shop.Says("table lines")) << "a program that is refused has none";
}

TEST(Check, BlocksCountInTheProgramWithoutItsEmptyLines) {
  Shop shop;
  shop.Put("GAPS",
           "\r\n! SHEET : X500 Y300\r\n\r\nG71 G90\r\nG00 X10 Y10\r\nG01 X9999 Y10\r\nM30\r\n");
  EXPECT_EQ(shop.Run({"JOBS", "GAPS"}), ExitStatus::Good) << "a warning refuses nothing";
  EXPECT_TRUE(shop.Says("warning         Out of limits in X\n"));
  EXPECT_TRUE(shop.Says("block 4: G01 X9999 Y10\n")) << shop.Out.str();
}

TEST(Check, PutsCriticalErrorsFirstAndARepeatedMessageOnce) {
  Shop shop;
  shop.Put("MANY",
           "! SHEET : X500 Y300\r\nG71 G90\r\nG00 X10 Y10\r\nG01 X9999 Y10\r\nG00 X10 Y10\r\n"
           "G01 X9998 Y10\r\nG00 X10 Y10\r\nG03 X20 Y10 R1\r\nM30\r\n");
  EXPECT_EQ(shop.Run({"JOBS", "MANY"}), ExitStatus::Refused);
  const auto text = shop.Out.str();
  const auto warning = text.find("warning         Out of limits in X\n");
  ASSERT_NE(warning, std::string::npos) << text;
  EXPECT_EQ(text.find("Out of limits in X", warning + 30), std::string::npos) << text;
  EXPECT_LT(text.find("CRITICAL"), warning);
  EXPECT_LT(text.find("block 4: G01 X9999 Y10\n", warning), text.find("block 6: G01 X9998 Y10\n"));
}

TEST(Check, OfAnIllegalKerfWidthIsARefusal) {
  Shop shop;
  EXPECT_EQ(shop.Run({"FAULTS", "KERF-WIDTH"}), ExitStatus::Refused);
  EXPECT_TRUE(shop.Says("Can Not Be Selected Due To Illegal Kerf Width !"));
}

TEST(Check, OfADirectoryTakesAllItsProgramsInOrder) {
  Shop shop;
  shop.Put("ALPHA", Plain);
  shop.Put("omega", Faulty);
  EXPECT_EQ(shop.Run({"JOBS"}), ExitStatus::Refused);
  const auto text = shop.Out.str();
  const auto alpha = text.find("JOBS\\ALPHA");
  const auto omega = text.find("JOBS\\omega");
  const auto plain = text.find("JOBS\\PLAIN");
  ASSERT_NE(alpha, std::string::npos);
  ASSERT_NE(omega, std::string::npos);
  EXPECT_LT(alpha, omega);
  EXPECT_LT(omega, plain);
  EXPECT_TRUE(shop.Says("3 programs: 2 good, 1 refused\n"));
}

TEST(Check, OnAnyNumberOfThreadsPrintsTheSame) {
  Shop shop;
  for (int i = 0; i < 20; ++i) shop.Put("JOB" + std::to_string(i), i % 3 == 0 ? Faulty : Plain);
  EXPECT_EQ(shop.Run({"--jobs", "1", "JOBS"}), ExitStatus::Refused);
  const auto one = shop.Out.str();
  for (int round = 0; round < 5; ++round) {
    EXPECT_EQ(shop.Run({"--jobs", "8", "JOBS"}), ExitStatus::Refused);
    EXPECT_EQ(shop.Out.str(), one);
  }
}

TEST(Check, EveryProgramOfTheExampleShopIsGood) {
  Shop shop;
  EXPECT_EQ(shop.Run({"SHOP"}), ExitStatus::Good) << shop.Out.str();
}

TEST(Check, LeavesTheInstallationAsItIs) {
  Shop shop;
  const auto before = Snapshot(shop.Home.Path());
  EXPECT_EQ(shop.Run({"JOBS"}), ExitStatus::Good);
  EXPECT_EQ(Snapshot(shop.Home.Path()), before);
}

TEST(Check, FindsNamesWithoutMindingTheirCase) {
  Shop shop;
  EXPECT_EQ(shop.Run({"jobs", "plain.prg"}), ExitStatus::Good);
}

TEST(CheckOut, LeavesTheFilesOfTheSlot) {
  Shop shop;
  const auto out = shop.Home.Path() + "/deep/out";
  EXPECT_EQ(shop.Run({"--out", out, "JOBS", "PLAIN"}), ExitStatus::Good);
  for (const char* extension :
       {"prg", "bdy", "cnv", "drw", "krw", "tbl", "tbx", "rnd", "cfg", "sts", "btc"}) {
    EXPECT_TRUE(fs::exists(out + "/Actvprg1." + extension)) << extension;
  }
  EXPECT_TRUE(fs::exists(out + "/Reverse.txt"));
  EXPECT_EQ(fs::file_size(out + "/Actvprg1.drw") % partprogram::DrawRecordSize, 0U);
  const auto program = shop.Home.Get("deep/out/Actvprg1.prg");
  EXPECT_EQ(program.find("\r\n\r\n"), std::string::npos) << "squeezed";
  EXPECT_NE(shop.Home.Get("deep/out/Actvprg1.tbx").find("TABLE("), std::string::npos);
}

TEST(CheckOut, FollowsTheSlot) {
  Shop shop;
  const auto out = shop.Home.Path() + "/out";
  EXPECT_EQ(shop.Run({"--slot", "2", "--out", out, "JOBS", "PLAIN"}), ExitStatus::Good);
  EXPECT_TRUE(shop.Home.Has("out/Actvprg2.tbl"));
  EXPECT_FALSE(shop.Home.Has("out/Actvprg1.tbl"));
}

TEST(CheckOut, OfARefusedProgramHoldsTheReportAndNothingOfAnEarlierOne) {
  Shop shop;
  shop.Put("FAULTY", Faulty);
  const auto out = shop.Home.Path() + "/out";
  ASSERT_EQ(shop.Run({"--out", out, "JOBS", "PLAIN"}), ExitStatus::Good);
  EXPECT_EQ(shop.Run({"--out", out, "JOBS", "FAULTY"}), ExitStatus::Refused);
  EXPECT_NE(shop.Home.Get("out/Reverse.txt").find("CRITICAL"), std::string::npos);
  EXPECT_TRUE(shop.Home.Has("out/Actvprg1.cnv"));
  for (const char* extension : {"krw", "tbl", "tbx", "rnd", "cfg"}) {
    EXPECT_FALSE(shop.Home.Has(std::string("out/Actvprg1.") + extension)) << extension;
  }
}

TEST(CheckOut, OfSeveralProgramsHasAFolderForEach) {
  Shop shop;
  shop.Put("OTHER", Plain);
  const auto out = shop.Home.Path() + "/out";
  EXPECT_EQ(shop.Run({"--out", out, "JOBS"}), ExitStatus::Good);
  EXPECT_TRUE(shop.Home.Has("out/PLAIN/Actvprg1.tbl"));
  EXPECT_TRUE(shop.Home.Has("out/OTHER/Actvprg1.tbl"));
}

TEST(CheckOut, AProgramNamedTwiceIsCheckedOnce) {
  Shop shop;
  EXPECT_EQ(shop.Run({"--out", shop.Home.Path() + "/out", "JOBS", "PLAIN", "PLAIN"}),
            ExitStatus::Good);
  EXPECT_TRUE(shop.Says("1 program: 1 good, 0 refused\n")) << shop.Out.str();
  EXPECT_TRUE(shop.Home.Has("out/Actvprg1.tbl"));
}

TEST(CheckOut, TwoProgramsNeverShareAFolder) {
  Shop shop;
  shop.Put("plain", Plain);
  EXPECT_EQ(shop.Run({"--out", shop.Home.Path() + "/out", "JOBS"}), ExitStatus::WrongUse);
  EXPECT_TRUE(shop.Complains("would go to one folder")) << shop.Errors.str();
  EXPECT_FALSE(shop.Home.Has("out"));
  EXPECT_EQ(shop.Run({"JOBS"}), ExitStatus::Good) << "without files there is nothing to mix";
  EXPECT_EQ(shop.Run({"--out", shop.Home.Path() + "/out", "JOBS", "plain"}), ExitStatus::Good);
}

TEST(CheckOut, ClearsAwayWhatAKilledCheckLeft) {
  Shop shop;
  shop.Home.Put("out/Actvprg1.tbl.new~", "half");
  shop.Home.Put("out/Subs/One/1.sub.3.new~", "half");
  shop.Home.Put("out/draft.new~", "somebody's");
  EXPECT_EQ(shop.Run({"--out", shop.Home.Path() + "/out", "JOBS", "PLAIN"}), ExitStatus::Good);
  EXPECT_FALSE(shop.Home.Has("out/Actvprg1.tbl.new~"));
  EXPECT_FALSE(shop.Home.Has("out/Subs/One/1.sub.3.new~"));
  EXPECT_TRUE(shop.Home.Has("out/draft.new~"));
}

TEST(CheckOut, ThatCannotBeWrittenIsToldAndNotCalledGood) {
  Shop shop;
  shop.Home.Put("file", "in the way");
  EXPECT_EQ(shop.Run({"--out", shop.Home.Path() + "/file/out", "JOBS", "PLAIN"}),
            ExitStatus::WrongUse);
  EXPECT_TRUE(shop.Says("PLAIN: not checked, "));
  EXPECT_TRUE(shop.Says("/file/out"));
  EXPECT_TRUE(shop.Says("1 program: 0 good, 0 refused, 1 not checked\n"));
}

TEST(CheckOut, TakesTheLoadPositionToldInPlaceOfTheMachines) {
  Shop shop;
  shop.Put("LOADS", "! SHEET : X500 Y300\r\nG71 G90\r\nM50\r\nM30\r\n");
  EXPECT_EQ(shop.Run({"--json", "--load", "120,45.5", "JOBS", "LOADS"}), ExitStatus::Good);
  EXPECT_TRUE(shop.Says("\"loadY\": 45.5")) << shop.Out.str();
  EXPECT_EQ(shop.Run({"--json", "JOBS", "LOADS"}), ExitStatus::Good);
  EXPECT_TRUE(shop.Says("\"loadY\": 0")) << shop.Out.str();
}

TEST(CheckPlot, DrawsAPictureWithThePathInItsColour) {
  Shop shop;
  const auto path = shop.Home.Path() + "/plot.png";
  EXPECT_EQ(shop.Run({"--plot", path, "--size", "400x300", "JOBS", "PLAIN"}), ExitStatus::Good);
  const QImage picture(QString::fromStdString(path));
  ASSERT_EQ(picture.size(), QSize(400, 300));
  int path40 = 0;
  int sheet = 0;
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      path40 += picture.pixelColor(x, y) == QColor(0, 255, 255) ? 1 : 0;
      sheet += picture.pixelColor(x, y) == QColor(128, 128, 128) ? 1 : 0;
    }
  }
  EXPECT_GT(path40, 20) << "cuts without kerf";
  EXPECT_GT(sheet, 20000);
}

TEST(CheckPlot, DrawsAnSvg) {
  Shop shop;
  const auto path = shop.Home.Path() + "/plot.svg";
  EXPECT_EQ(shop.Run({"--plot", path, "JOBS", "PLAIN"}), ExitStatus::Good);
  EXPECT_NE(shop.Home.Get("plot.svg").find("<svg"), std::string::npos);
}

TEST(CheckPlot, OfSeveralProgramsNamesEach) {
  Shop shop;
  shop.Put("OTHER", Plain);
  EXPECT_EQ(shop.Run({"--plot", shop.Home.Path() + "/plot.png", "JOBS"}), ExitStatus::Good);
  EXPECT_TRUE(shop.Home.Has("plot-PLAIN.png"));
  EXPECT_TRUE(shop.Home.Has("plot-OTHER.png"));
}

TEST(CheckPlot, ThatCannotBeWrittenIsTold) {
  Shop shop;
  EXPECT_EQ(shop.Run({"--plot", shop.Home.Path() + "/none/plot.png", "JOBS", "PLAIN"}),
            ExitStatus::WrongUse);
  EXPECT_TRUE(shop.Says("/none/plot.png"));
  EXPECT_EQ(shop.Run({"--plot", shop.Home.Path() + "/n\xC3\xB6/plot.png", "JOBS", "PLAIN"}),
            ExitStatus::WrongUse);
  EXPECT_TRUE(shop.Says("/n\xC3\xB6/plot.png")) << shop.Out.str();
}

TEST(CheckJson, HoldsEverythingOfTheReport) {
  Shop shop;
  shop.Put("FAULTY", Faulty);
  EXPECT_EQ(shop.Run({"--json", "JOBS", "PLAIN", "FAULTY"}), ExitStatus::Refused);
  const auto whole = QJsonDocument::fromJson(QByteArray::fromStdString(shop.Out.str())).object();
  EXPECT_EQ(whole["checked"].toInt(), 2);
  EXPECT_EQ(whole["good"].toInt(), 1);
  const auto programs = whole["programs"].toArray();
  ASSERT_EQ(programs.size(), 2);
  const auto plain = programs[0].toObject();
  EXPECT_EQ(plain["program"].toString(), "PLAIN");
  EXPECT_EQ(plain["verdict"].toString(), "good");
  EXPECT_EQ(plain["material"].toString(), "Copper");
  EXPECT_EQ(plain["sheet"].toArray()[0].toDouble(), 500);
  EXPECT_EQ(plain["elements"].toInt(), 3);
  EXPECT_EQ(plain["recordsByKind"].toObject()["Line Profile"].toInt(), 2);
  EXPECT_GT(plain["tableLines"].toInt(), 0);
  EXPECT_FALSE(plain.contains("reason"));
  const auto faulty = programs[1].toObject();
  EXPECT_EQ(faulty["verdict"].toString(), "refused");
  const auto error = faulty["errors"].toArray()[0].toObject();
  EXPECT_EQ(error["level"].toString(), "critical");
  EXPECT_EQ(error["message"].toString(), "Non-Interpolated Arc (Invalid R)");
  EXPECT_EQ(error["block"].toString(), "G03 X20 Y10 R1");
  EXPECT_EQ(error["blockNumber"].toInt(), 5);
}

TEST(CheckReport, PrintsTheReportOfThePassOnRequest) {
  Shop shop;
  EXPECT_EQ(shop.Run({"--report", "JOBS", "PLAIN"}), ExitStatus::Good);
  EXPECT_TRUE(shop.Says("PROGRAM   :  PLAIN"));
  EXPECT_TRUE(shop.Says("******"));
}

TEST(CheckProgress, ShowsOnATerminalOnlyAndGoesAway) {
  Shop shop;
  shop.Put("OTHER", Plain);
  EXPECT_EQ(shop.Run({"JOBS"}), ExitStatus::Good);
  EXPECT_EQ(shop.Errors.str(), "");
  EXPECT_EQ(shop.Run({"JOBS"}, true), ExitStatus::Good);
  EXPECT_TRUE(shop.Complains("1 of 2 checked: "));
  EXPECT_TRUE(shop.Complains("2 of 2 checked: "));
  EXPECT_TRUE(shop.Errors.str().ends_with("\r\x1b[K"));
  EXPECT_EQ(shop.Out.str().find('\x1b'), std::string::npos);
}

TEST(CheckText, LeavesTheTerminalItsOwnLetters) {
  Shop shop;
  shop.Put("LATIN",
           "! MATERIAL : Edelstahl gr\xFC"
           "n\r\n! SHEET : X500 Y300\r\nM30\r\n");
  EXPECT_EQ(shop.Run({"JOBS", "LATIN"}), ExitStatus::Good);
  EXPECT_TRUE(shop.Says("gr\xC3\xBCn")) << shop.Out.str();
}

TEST(CheckText, ThatDoesNotGetThroughIsNoGoodCheck) {
  Shop shop;
  for (const std::vector<std::string>& use : {std::vector<std::string>{"JOBS", "PLAIN"},
                                              {"--json", "JOBS", "PLAIN"},
                                              {"--restart", "all", "JOBS", "PLAIN"}}) {
    shop.Out.setstate(std::ios::badbit);
    EXPECT_EQ(shop.Run(use), ExitStatus::WrongUse) << use[0];
    EXPECT_TRUE(shop.Complains("torvane-check: the output cannot be written")) << use[0];
    shop.Out.clear();
  }
}

TEST(CheckWrongUse, ARootThatIsNotThereIsBlamedOnControlCfg) {
  Shop shop;
  const auto blamed = [&](const std::string& lines, const std::string& words) {
    shop.Home.Put("root/Control.cfg", lines + "JOBS\r\n1\r\n******\r\n");
    EXPECT_EQ(shop.Run({"JOBS", "PLAIN"}), ExitStatus::WrongUse);
    EXPECT_TRUE(shop.Complains("Control.cfg: " + words)) << shop.Errors.str();
  };
  blamed(".\\\r\nNowhere\r\n", "its programs root is not there, Nowhere\\");
  blamed("Nowhere\r\n.\\Programs\r\n", "its root directory holds no installation, Nowhere\\");
}

TEST(CheckWrongUse, IsOneSentenceAndStatusTwo) {
  Shop shop;
  const auto refused = [&](const std::vector<std::string>& arguments, const std::string& words) {
    EXPECT_EQ(shop.Run(arguments), ExitStatus::WrongUse);
    EXPECT_TRUE(shop.Complains(words)) << shop.Errors.str();
    EXPECT_EQ(shop.Out.str(), "");
  };
  refused({"NOWHERE"}, "Directory Does Not Exist !");
  refused({"JOBS", "PLAIN", "NOTHING"}, "NOTHING: Program Does Not Exist !");
  refused({"..", "PLAIN"}, "Invalid Directory Name !");
  refused({"JOBS", "..\\SHOP\\STAR"}, "Invalid Program Name !");
  refused({"JOBS", "../SHOP/STAR"}, "Invalid Program Name !");
  refused({std::string(33, 'D')}, "Invalid Directory Name !");
  refused({"JOBS", std::string(33, 'P')}, "Invalid Program Name !");
  refused({"JOBS", "--slot", "7"}, "--help");
  fs::create_directory(shop.Home.Path() + "/root/Programs/EMPTY");
  refused({"EMPTY"}, "no part programs");
}

TEST(CheckWrongUse, NameOf32CharactersIsTaken) {
  Shop shop;
  const std::string name(32, 'P');
  shop.Put(name, Plain);
  EXPECT_EQ(shop.Run({"JOBS", name}), ExitStatus::Good);
}

TEST(CheckWrongUse, NamesTheFileOfTheInstallationThatIsMissing) {
  Shop shop;
  fs::remove(shop.Home.Path() + "/root/Data/Machine.dat");
  EXPECT_EQ(shop.Run({"JOBS"}), ExitStatus::WrongUse);
  EXPECT_TRUE(shop.Complains("Machine.dat")) << shop.Errors.str();
  fs::remove(shop.Home.Path() + "/root/Control.cfg");
  EXPECT_EQ(shop.Run({"JOBS"}), ExitStatus::WrongUse);
  EXPECT_TRUE(shop.Complains("Control.cfg")) << shop.Errors.str();
}

TEST(CheckHelp, IsGood) {
  Shop shop;
  EXPECT_EQ(shop.Run({"--help"}), ExitStatus::Good);
  EXPECT_TRUE(shop.Says("--plot"));
}

}  // namespace
}  // namespace torvane::tools
