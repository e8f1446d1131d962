// Restarts rehearsed by the command: JSON, plain sentences, a slot as it is, and wrong use.
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <vector>

#include <gmock/gmock.h>

#include "CheckShop.h"

namespace torvane::tools {
namespace {

using ::testing::HasSubstr;

constexpr const char* Plate =
    "! SHEET : X1000 Y500\r\nG31 T2=3 1=5\r\nG56 X25 Y30\r\nG42 K0.4 M04\r\nG00 X75 Y70\r\n"
    "N7 G01 X675 Y70\r\nN8 G01 Y270\r\nN9 G03 X475 Y270 I-100\r\nN10 G01 Y70\r\n"
    "G40 M05\r\nP103=2.5\r\nN123 G98 S4 A0\r\nN200 G00 X700\r\nM30\r\n"
    "\r\nS4\r\nG00 X5 Y5\r\nG01 X20 Y5\r\nM02\r\n";

struct RestartShop : Shop {
  RestartShop() { Put("PLATE", Plate); }

  /// One object for each line that was printed.
  std::vector<QJsonObject> Objects(std::vector<std::string> arguments,
                                   int status = ExitStatus::Good) {
    arguments.insert(arguments.end(), {"--json"});
    EXPECT_EQ(Run(arguments), status) << Errors.str();
    std::vector<QJsonObject> objects;
    for (const auto& line : QByteArray::fromStdString(Out.str()).split('\n')) {
      if (line.isEmpty()) continue;
      objects.push_back(QJsonDocument::fromJson(line).object());
      EXPECT_FALSE(objects.back().isEmpty()) << line.toStdString();
    }
    return objects;
  }
  QJsonObject Object(const std::vector<std::string>& arguments) {
    const auto objects = Objects(arguments);
    EXPECT_EQ(objects.size(), 1U);
    return objects.empty() ? QJsonObject() : objects.front();
  }
  /// Slot 1 holds the program, as a selection leaves it.
  void FillSlot() {
    ASSERT_EQ(Run({"--out", Home.Path() + "/root", "JOBS", "PLATE"}), ExitStatus::Good);
  }
};

std::vector<std::string> Texts(const QJsonValue& array) {
  std::vector<std::string> texts;
  for (const auto& text : array.toArray()) texts.push_back(text.toString().toStdString());
  return texts;
}

std::vector<double> Numbers(const QJsonValue& array) {
  std::vector<double> numbers;
  for (const auto& number : array.toArray()) numbers.push_back(number.toDouble());
  return numbers;
}

using ::testing::Contains;
using ::testing::ElementsAre;

TEST(CheckRestart, OfABlockHoldsEverythingInOneObject) {
  RestartShop shop;
  const auto at = shop.Object({"JOBS", "PLATE", "--restart", "7", "--sent", "9"});
  EXPECT_EQ(at["kind"].toString(), "block");
  EXPECT_EQ(at["block"].toInt(), 7);
  EXPECT_EQ(at["subBlock"].toInt(), 0);
  EXPECT_EQ(at["text"].toString(), "N8 G01 Y270");
  EXPECT_TRUE(at["met"].toBool());
  const auto state = at["state"].toObject();
  EXPECT_TRUE(state["gathered"].toBool());
  EXPECT_EQ(state["blockNo"].toInt(), 8);
  EXPECT_FALSE(state["imperial"].toBool());
  EXPECT_FALSE(state["incremental"].toBool());
  EXPECT_THAT(Numbers(state["g56"]), ElementsAre(25, 30));
  EXPECT_THAT(Numbers(state["g92"]), ElementsAre(0, 0));
  EXPECT_EQ(state["mirrorCode"].toInt(), 0);
  EXPECT_TRUE(state["profilerOn"].toBool());
  EXPECT_EQ(state["kerfSide"].toInt(), 2);
  EXPECT_EQ(Numbers(state["parameters"]), std::vector<double>(10, -999));
  EXPECT_THAT(Numbers(state["position"]), ElementsAre(700, 100, 0));
  EXPECT_EQ(at["nextState"].toObject()["blockNo"].toInt(), 9);
  EXPECT_THAT(Texts(at["restartTbx"]),
              ElementsAre("M100", "G00 X700 Y100 G42",
                          " P101=-999 P102=-999 P103=-999 P104=-999 P105=-999 P106=-999 P107=-999"
                          " P108=-999 P109=-999 P110=-999",
                          "M04", "TABLE (9,-999)"));
  EXPECT_THAT(Texts(at["sentNow"]), ElementsAre("TABLE (9,-999)", "VR(91)=3"));
  EXPECT_THAT(Texts(at["sentAtStart"]), ElementsAre("VR(91)=1", "B1.00008R"));
  EXPECT_THAT(Texts(at["sentOnCancel"]), ElementsAre("VR(91)=1"));
  EXPECT_TRUE(at["split"].isNull());
  const auto entry = at["entry"].toObject();
  EXPECT_EQ(entry["code"].toInt(), 120);
  EXPECT_THAT(Numbers(entry["programmed"]), ElementsAre(700, 100));
  EXPECT_TRUE(at["faults"].toArray().isEmpty());
  EXPECT_THAT(at["gatherTxt"].toString().toStdString(), HasSubstr("Block No.    :  8 "));
  EXPECT_THAT(Texts(at["warnings"]), Contains("settings before the point not gathered"));
}

TEST(CheckRestart, OfALineOfASubroutine) {
  RestartShop shop;
  const auto at = shop.Object({"JOBS", "PLATE", "--restart", "12:3"});
  EXPECT_EQ(at["block"].toInt(), 12);
  EXPECT_EQ(at["subBlock"].toInt(), 3);
  EXPECT_TRUE(at["met"].toBool());
  EXPECT_EQ(at["state"].toObject()["blockNo"].toInt(), 123) << "the number of the call";
  EXPECT_EQ(Numbers(at["state"].toObject()["parameters"])[2], 2.5);
}

TEST(CheckRestart, OfTheSecondSlotGoesToItsTable) {
  RestartShop shop;
  const auto at = shop.Object({"JOBS", "PLATE", "--restart", "7", "--slot", "2"});
  EXPECT_THAT(Texts(at["sentAtStart"]), ElementsAre("VR(91)=2", "B2.00008R"));
  EXPECT_THAT(Texts(at["sentOnCancel"]), ElementsAre("VR(91)=2"));
}

TEST(CheckRestart, SentIsTheFirstFillUnlessToldOtherwise) {
  RestartShop shop;
  const auto lines = [&](const std::vector<std::string>& more) {
    std::vector<std::string> arguments = {"JOBS", "PLATE", "--restart", "7"};
    arguments.insert(arguments.end(), more.begin(), more.end());
    return Texts(shop.Object(arguments)["sentNow"]).front();
  };
  EXPECT_EQ(lines({}), "TABLE (11,-999)") << "the whole of a short table";
  EXPECT_EQ(lines({"--sent", "500"}), "TABLE (500,-999)") << "a count, also where the ring is";
  EXPECT_EQ(lines({"--sent", "0"}), "TABLE (0,-999)");
}

TEST(CheckRestart, TheLoadPositionIsTheStartOfTheWalk) {
  RestartShop shop;
  const auto at = shop.Object({"JOBS", "PLATE", "--restart", "1", "--load", "2500,40"});
  EXPECT_THAT(Numbers(at["state"].toObject()["position"]), ElementsAre(2500, 40, 0));
}

TEST(CheckRestart, InsideALineTellsTheSplitAndItsProjection) {
  RestartShop shop;
  const auto whole = shop.Object({"JOBS", "PLATE", "--restart", "6"});
  const int record = whole["entry"].toObject()["record"].toInt();
  const auto at = shop.Object(
      {"JOBS", "PLATE", "--restart-record", std::to_string(record), "--remaining", "580"});
  EXPECT_EQ(at["kind"].toString(), "visual");
  EXPECT_EQ(at["block"].toInt(), 6);
  EXPECT_EQ(at["text"].toString(), "N7 G01 X675 Y70");
  EXPECT_EQ(at["state"].toObject()["blockNo"].toInt(), 8);
  const auto split = at["split"].toObject();
  EXPECT_EQ(split["record"].toInt(), record);
  EXPECT_EQ(split["step"].toDouble(), 20);
  EXPECT_EQ(split["remaining"].toDouble(), 580);
  const auto compensated = Numbers(at["entry"].toObject()["compensated"]);
  EXPECT_NEAR(compensated[0], 120, 1e-3);
  EXPECT_NEAR(std::abs(compensated[1] - 100), 0.4, 1e-3) << "beside the programmed line";
  EXPECT_THAT(Texts(at["restartTbx"]), Contains("G01 X700.00 Y100.00"));
}

TEST(CheckRestart, InsideAnArcTheRemainderIsInDegrees) {
  RestartShop shop;
  const int record =
      shop.Object({"JOBS", "PLATE", "--restart", "8"})["entry"].toObject()["record"].toInt();
  const auto at = shop.Object(
      {"JOBS", "PLATE", "--restart-record", std::to_string(record), "--remaining", "90"});
  EXPECT_EQ(at["split"].toObject()["remaining"].toDouble(), 90);
  EXPECT_EQ(at["split"].toObject()["step"].toDouble(), 6);
  EXPECT_THAT(Texts(at["restartTbx"]), Contains("G03 X500.00 Y300.00 I0.00 J-100.00"));
  EXPECT_EQ(shop.Run({"JOBS", "PLATE", "--restart-record", std::to_string(record), "--remaining",
                      "whole"}),
            ExitStatus::Good);
  EXPECT_THAT(shop.Out.str(), HasSubstr("First cut: the last 180.00 degrees of the arc"));
}

TEST(CheckRestart, OfAllHasAnObjectForEachBlockAndEachCut) {
  RestartShop shop;
  const auto all = shop.Objects({"JOBS", "PLATE", "--restart", "all"});
  int blocks = 0;
  int cuts = 0;
  for (const auto& at : all) {
    const bool block = at["kind"].toString() == "block";
    block ? ++blocks : ++cuts;
    EXPECT_EQ(block, at["split"].isNull());
    if (block) {
      EXPECT_EQ(at["block"].toInt(), blocks) << "in the order of the listing";
    }
    EXPECT_TRUE(at["met"].toBool()) << at["text"].toString().toStdString();
  }
  EXPECT_EQ(blocks, 14) << "of the listing, without the subroutine";
  EXPECT_EQ(cuts, 8) << "with the beam on a G00 cuts too";
}

TEST(CheckRestart, InPlainSentences) {
  RestartShop shop;
  EXPECT_EQ(shop.Run({"JOBS", "PLATE", "--restart", "7"}), ExitStatus::Good);
  EXPECT_EQ(shop.Out.str(),
            "At block 7: N8 G01 Y270\n"
            "  With the beam off the head goes to X700.00 Y100.00.\n"
            "  First cut: the line from X700.00 Y100.00 to X700.00 Y300.00 of block 7.\n"
            "  In force: millimetres, absolute, kerf right, beam on.\n"
            "  Note: settings before the point not gathered.\n");
}

TEST(CheckRestart, OfABlockThatIsNeverMetSaysSoByItsStatus) {
  RestartShop shop;
  EXPECT_EQ(shop.Run({"JOBS", "PLATE", "--restart", "99"}), ExitStatus::Refused);
  EXPECT_THAT(shop.Out.str(), HasSubstr("target not met"));
  const auto objects = shop.Objects({"JOBS", "PLATE", "--restart", "99"}, ExitStatus::Refused);
  ASSERT_EQ(objects.size(), 1U);
  EXPECT_FALSE(objects[0]["met"].toBool());
  EXPECT_TRUE(objects[0]["state"].toObject()["gathered"].toBool()) << "as the console has it";
}

TEST(CheckRestart, OfARefusedProgramIsRefused) {
  RestartShop shop;
  EXPECT_EQ(shop.Run({"FAULTS", "KERF-WIDTH", "--restart", "3"}), ExitStatus::Refused);
  EXPECT_THAT(shop.Errors.str(), HasSubstr("KERF-WIDTH"));
  EXPECT_EQ(shop.Out.str(), "");
}

TEST(CheckRestart, OfASlotReadsItsFilesAsTheyAreAndWritesNothing) {
  RestartShop shop;
  shop.FillSlot();
  // The program behind it has gone meanwhile.
  shop.Put("PLATE", "! SHEET : X10 Y10\r\nM30\r\n");
  const std::string before = Snapshot(shop.Home.Path());
  const auto at = shop.Object({"--active", "1", "--restart", "7"});
  EXPECT_EQ(at["text"].toString(), "N8 G01 Y270");
  EXPECT_THAT(Texts(at["sentNow"]), ElementsAre("TABLE (11,-999)", "VR(91)=3"));
  EXPECT_THAT(at["gatherTxt"].toString().toStdString(), HasSubstr("PROGRAM   :  PLATE"));
  EXPECT_EQ(shop.Objects({"--active", "1", "--restart", "all"}).size(), 22U);
  EXPECT_EQ(Snapshot(shop.Home.Path()), before);
}

TEST(CheckRestart, OfAnEmptySlotNamesTheMissingFile) {
  RestartShop shop;
  EXPECT_EQ(shop.Run({"--active", "2", "--restart", "7"}), ExitStatus::WrongUse);
  EXPECT_THAT(shop.Errors.str(), HasSubstr("Actvprg2."));
}

TEST(CheckRestart, OfADamagedSlotNamesTheDamagedFile) {
  RestartShop shop;
  shop.FillSlot();
  shop.Home.Put("root/Actvprg1.krw", "short");
  EXPECT_EQ(shop.Run({"--active", "1", "--restart", "7"}), ExitStatus::WrongUse);
  EXPECT_THAT(shop.Errors.str(), HasSubstr("Actvprg1.krw"));
}

TEST(CheckRestart, ThePlotMarksTheTravelAndTheEntry) {
  RestartShop shop;
  const auto path = shop.Home.Path() + "/plot.png";
  const auto plain = shop.Home.Path() + "/plain.png";
  EXPECT_EQ(shop.Run({"JOBS", "PLATE", "--plot", plain}), ExitStatus::Good);
  EXPECT_EQ(shop.Run({"JOBS", "PLATE", "--restart", "7", "--plot", path}), ExitStatus::Good);
  const QImage marked(QString::fromStdString(path));
  ASSERT_FALSE(marked.isNull());
  EXPECT_EQ(marked.size(), QSize(1200, 900));
  EXPECT_NE(marked, QImage(QString::fromStdString(plain)));
}

class WrongRestarts : public ::testing::TestWithParam<std::vector<std::string>> {};

TEST_P(WrongRestarts, AreWrongUseWithASentence) {
  RestartShop shop;
  EXPECT_EQ(shop.Run(GetParam()), ExitStatus::WrongUse);
  EXPECT_THAT(shop.Errors.str(), ::testing::StartsWith("torvane-check: "));
  EXPECT_EQ(shop.Out.str(), "");
}

using Arguments = std::vector<std::string>;
INSTANTIATE_TEST_SUITE_P(
    Each, WrongRestarts,
    ::testing::Values(
        Arguments{"JOBS", "PLATE", "--restart", "0"}, Arguments{"JOBS", "PLATE", "--restart", "-3"},
        Arguments{"JOBS", "PLATE", "--restart", "x"}, Arguments{"JOBS", "PLATE", "--restart", "7:"},
        Arguments{"JOBS", "PLATE", "--restart", "7:-1"},
        Arguments{"JOBS", "PLATE", "--restart", "40000"},
        Arguments{"JOBS", "PLATE", "--restart", "7", "--restart-record", "3"},
        Arguments{"JOBS", "PLATE", "--restart-record", "1"},
        Arguments{"JOBS", "PLATE", "--restart-record", "2"},
        Arguments{"JOBS", "PLATE", "--restart-record", "999"},
        Arguments{"JOBS", "PLATE", "--restart-record", "5", "--remaining", "0"},
        Arguments{"JOBS", "PLATE", "--restart-record", "5", "--remaining", "-4"},
        Arguments{"JOBS", "PLATE", "--restart-record", "5", "--remaining", "nan"},
        Arguments{"JOBS", "PLATE", "--restart-record", "5", "--remaining", "much"},
        Arguments{"JOBS", "PLATE", "--restart", "7", "--remaining", "3"},
        Arguments{"JOBS", "PLATE", "--restart", "7", "--sent", "-1"},
        Arguments{"JOBS", "PLATE", "--restart", "7", "--sent", "40000"},
        Arguments{"JOBS", "PLATE", "--sent", "5"}, Arguments{"JOBS", "--restart", "7"},
        Arguments{"JOBS", "PLATE", "PLAIN", "--restart", "7"}, Arguments{"--restart", "7"},
        Arguments{"--active", "1"}, Arguments{"--active", "3", "--restart", "7"},
        Arguments{"--active", "1", "JOBS", "PLATE", "--restart", "7"},
        Arguments{"JOBS", "PLATE", "--restart", "all", "--plot", "p.png"},
        Arguments{"JOBS", "NOWHERE", "--restart", "7"},
        Arguments{"NOWHERE", "PLATE", "--restart", "7"}));

}  // namespace
}  // namespace torvane::tools
