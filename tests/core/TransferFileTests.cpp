// Control.cms: the port and the frame of a program on its line.
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include "core/SettingsModule.h"
#include "core/TransferFile.h"
#include "platform/DiskFileSystem.h"
#include "support/Faults.h"
#include "support/TempDirectory.h"

namespace torvane::core {
namespace {

using namespace std::string_literals;

/// A file whose line `number` (from 1) holds `value`; the others are empty.
std::string OneLine(int number, const std::string& value) {
  std::string text;
  for (int line = 1; line < number; ++line) text += "\r\n";
  return text + "A label : " + value + "\r\n";
}

TransferSettings ReadLine(int number, const std::string& value) {
  return ReadTransferFile(OneLine(number, value));
}

std::string Characters(const CharacterSet& set) {
  std::string characters;
  for (int code = 0; code < 256; ++code) {
    const char character = static_cast<char>(code);
    if (set.Holds(character)) characters += character;
  }
  return characters;
}

TEST(ControlCms, SeventeenLinesInTheirOrder) {
  const TransferSettings settings = ReadTransferFile(
      "Program transfer\r\nPort : 2\r\nBaud : 9600\r\nParity : E\r\nData : 7\r\nStop : 2\r\n"
      "Handshake : XON/XOFF RTS/CTS\r\nStart : auto\r\nChar : 37\r\nPreamble : 3,0,1,37\r\n"
      "End of line : 1,13,1,10\r\nPostamble : 1,4\r\nMark : 2,65\r\nSend filter : 4\r\n"
      "Receive filter : 0,10\r\nFirst : 70000\r\nSecond : 100000\r\n");
  EXPECT_EQ(settings.CommsPort, 2);
  EXPECT_EQ(settings.CommsSettings, "9600,E,7,2");
  EXPECT_EQ(settings.CommsHandshake, 3);
  EXPECT_FALSE(settings.CommsDtrKeyword);
  EXPECT_EQ(settings.CommsStartMode, StartMode::Character);
  EXPECT_EQ(settings.CommsStartChar, "%");
  EXPECT_EQ(settings.CommsPreamble, "\0\0\0%"s);
  EXPECT_EQ(settings.CommsEndOfLine, "\r\n");
  EXPECT_EQ(settings.CommsPostamble, "\x04");
  EXPECT_EQ(settings.CommsReceiveMark, "AA");
  EXPECT_EQ(Characters(settings.CommsSendFilter), "\x04");
  EXPECT_EQ(Characters(settings.CommsReceiveFilter), "\0\n"s);
  EXPECT_EQ(settings.CommsReserved1, 65535);
  EXPECT_EQ(settings.CommsReserved2, 100000);
}

TEST(ControlCms, AValueIsWhatStandsAfterTheFirstColonOrTheWholeLine) {
  EXPECT_EQ(ReadTransferFile("T\r\n  3  \r\n").CommsPort, 3);
  EXPECT_EQ(ReadTransferFile("T\r\nPort : 3 : 4\r\n").CommsPort, 3);
  EXPECT_EQ(ReadLine(9, ":").CommsStartChar, ":") << "behind the first colon";
}

TEST(ControlCms, MissingLinesReadAsEmpty) {
  const TransferSettings settings = ReadTransferFile("");
  EXPECT_EQ(settings.CommsPort, 0);
  EXPECT_EQ(settings.CommsSettings, ",,,");
  EXPECT_EQ(settings.CommsHandshake, 0);
  EXPECT_EQ(settings.CommsStartMode, StartMode::Never);
  EXPECT_EQ(settings.CommsStartChar, "");
  EXPECT_EQ(settings.CommsPostamble, "");
  EXPECT_TRUE(settings.CommsReceiveFilter.Empty());
}

TEST(ControlCms, TheHandshakeWordsAddUp) {
  EXPECT_EQ(ReadLine(7, "NONE").CommsHandshake, 0);
  EXPECT_EQ(ReadLine(7, "xon").CommsHandshake, 1);
  EXPECT_EQ(ReadLine(7, "XOFF").CommsHandshake, 1);
  EXPECT_EQ(ReadLine(7, "RTS").CommsHandshake, 2);
  EXPECT_EQ(ReadLine(7, "cts").CommsHandshake, 2);
  EXPECT_EQ(ReadLine(7, "XON/XOFF RTS/CTS").CommsHandshake, 3);
  EXPECT_EQ(ReadLine(7, "DTR").CommsHandshake, 0);
  EXPECT_TRUE(ReadLine(7, "DTR").CommsDtrKeyword);
}

TEST(ControlCms, TheStartWordsAreSearchedInTheirOrder) {
  EXPECT_EQ(ReadLine(8, "Auto").CommsStartMode, StartMode::Character);
  EXPECT_EQ(ReadLine(8, "force").CommsStartMode, StartMode::Force);
  EXPECT_EQ(ReadLine(8, "IMMEDIATE").CommsStartMode, StartMode::Force);
  EXPECT_EQ(ReadLine(8, "ANY EVENT").CommsStartMode, StartMode::Event) << "ANY comes last";
  EXPECT_EQ(ReadLine(8, "CTS or DSR").CommsStartMode, StartMode::Dsr);
  EXPECT_EQ(ReadLine(8, "CTS").CommsStartMode, StartMode::Cts);
  EXPECT_EQ(ReadLine(8, "ANY").CommsStartMode, StartMode::AnyData);
  EXPECT_EQ(ReadLine(8, "MANUAL").CommsStartMode, StartMode::Never);
}

TEST(ControlCms, AStartCharacterIsACodeOrItself) {
  EXPECT_EQ(ReadLine(9, "37").CommsStartChar, "%");
  EXPECT_EQ(ReadLine(9, "%").CommsStartChar, "%");
  EXPECT_EQ(ReadLine(9, "%37").CommsStartChar, "%");
  EXPECT_EQ(ReadLine(9, "0").CommsStartChar, "\0"s);
  EXPECT_EQ(ReadLine(9, "").CommsStartChar, "");
  EXPECT_EQ(ReadLine(9, "256").CommsStartChar, "") << "no character has that code";
}

TEST(CodeString, PairsOfCountAndCode) {
  EXPECT_EQ(ReadCodeString("2,13,1,10"), "\r\r\n");
  EXPECT_EQ(ReadCodeString("30,0,1,37"), std::string(30, '\0') + "%");
  EXPECT_EQ(ReadCodeString(" 1 , 65 , 2 , 66 "), "ABB");
  EXPECT_EQ(ReadCodeString(""), "");
}

TEST(CodeString, AnOddLastNumberGivesNothing) {
  EXPECT_EQ(ReadCodeString("65"), "");
  EXPECT_EQ(ReadCodeString("1,65,3"), "A");
  EXPECT_EQ(ReadCodeString("1,65,3,"), "A");
}

TEST(CodeString, WrongNumbersGiveNoCharacterAndNoFault) {
  EXPECT_EQ(ReadCodeString("-4,65,1,66"), "B");
  EXPECT_EQ(ReadCodeString("1,256,1,66"), "B");
  EXPECT_EQ(ReadCodeString("1,-1,1,66"), "B");
  EXPECT_EQ(ReadCodeString("1,x"), "\0"s) << "no number is 0";
  EXPECT_EQ(ReadCodeString("1e30,65,1e30,66,1e30,67").size(), 65536U);
}

TEST(CodeList, CodesDividedByCommas) {
  EXPECT_EQ(Characters(ReadCodeList("0,10")), "\0\n"s);
  EXPECT_EQ(Characters(ReadCodeList(" 65 ,66")), "AB");
  EXPECT_EQ(Characters(ReadCodeList("65,,66,")), "AB");
  EXPECT_EQ(Characters(ReadCodeList("300,-1,66")), "B");
  EXPECT_TRUE(ReadCodeList("").Empty());
}

RC_GTEST_PROP(CodeString, EveryStringCanBeWritten, (const std::string& wanted)) {
  std::string codes;
  for (const char character : wanted) {
    codes += (codes.empty() ? "1," : ",1,") +
             std::to_string(static_cast<int>(static_cast<unsigned char>(character)));
  }
  RC_ASSERT(ReadCodeString(codes) == wanted);
}

TEST(ControlCms, IsRequiredAndNotedBeforeItIsOpened) {
  const tests::TempDirectory temp;
  platform::DiskFileSystem files(temp.Path());
  temp.MakeDirectory("Service");
  DirectorySet directories;
  TransferSettings settings;
  const auto load = [&] { LoadTransferSettings(files, directories, settings); };
  EXPECT_EQ(tests::FaultOf(load), "Control.cms: not found");
  EXPECT_EQ(temp.Get("Service/LastFile.txt"), "Control.cms\r\n");
  temp.Put("Control.cms", OneLine(2, "4"));
  EXPECT_EQ(tests::FaultOf(load), "");
  EXPECT_EQ(settings.CommsPort, 4);
}

}  // namespace
}  // namespace torvane::core
