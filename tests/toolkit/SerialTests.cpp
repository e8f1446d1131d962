// The serial port over a pseudo-terminal.
#include <filesystem>

#include <fcntl.h>
#include <poll.h>
#include <pty.h>
#include <termios.h>
#include <unistd.h>

#include "support/QtEnvironment.h"
#include "support/TempDirectory.h"
#include "toolkit/QtSerialPort.h"

namespace torvane::tests {
namespace {

using namespace toolkit;

TEST(SerialSettings, AreReadFromTheirText) {
  const auto settings = ParseSettings("9600,E,7,2");
  ASSERT_TRUE(settings);
  EXPECT_EQ(*settings, (SerialSettings{9600, 'E', 7, 2}));
  EXPECT_EQ(ParseSettings(" 115200 , n , 8 , 1 "), (SerialSettings{115200, 'N', 8, 1}));
  EXPECT_EQ(ParseSettings("1200,M,5,1.5")->StopBits, 1.5);
}

TEST(SerialSettings, ThatMakeNoSenseAreRefused) {
  for (const char* text :
       {"", "9600", "9600,N,8", "9600,N,8,1,", "x,N,8,1", "0,N,8,1", "9600,Q,8,1", "9600,N,9,1",
        "9600,N,4,1", "9600,N,8,3", "-1,N,8,1", "9600,NN,8,1", "99999999999999999999,N,8,1"}) {
    EXPECT_FALSE(ParseSettings(text)) << text;
  }
}

TEST(SerialSettings, ANumberNamesADevice) {
  EXPECT_EQ(DeviceOf(1, {}), "/dev/ttyS0");
  EXPECT_EQ(DeviceOf(4, {}), "/dev/ttyS3");
  EXPECT_EQ(DeviceOf(4, {{4, "/dev/ttyUSB0"}}), "/dev/ttyUSB0");
  EXPECT_EQ(DeviceOf(0, {}), "");
  EXPECT_EQ(DeviceOf(-3, {{-3, "/dev/null"}}), "");
}

TEST(SerialDevices, APathFromTheWorkingDirectoryIsOne) {
  const TempDirectory temp;
  temp.Put("line", "");
  namespace fs = std::filesystem;
  const fs::path before = fs::current_path();
  fs::current_path(temp.Path());
  const std::string here = fs::current_path().string();
  EXPECT_EQ(DeviceOf(1, {{1, "line"}}), here + "/line");
  fs::create_symlink("gone", "link");
  EXPECT_EQ(DeviceOf(1, {{1, "link"}}), here + "/link") << "its other end comes later";
  EXPECT_EQ(DeviceOf(1, {{1, "by/line"}}), here + "/by/line");
  EXPECT_EQ(DeviceOf(1, {{1, "ttyUSB0"}}), "ttyUSB0") << "a name of /dev";
  fs::current_path(before);
}

class Serial : public ::testing::Test {
 protected:
  Serial() {
    char name[256] = {};
    EXPECT_EQ(openpty(&master_, &slave_, name, nullptr, nullptr), 0);
    termios raw{};
    tcgetattr(slave_, &raw);
    cfmakeraw(&raw);
    tcsetattr(slave_, TCSANOW, &raw);
    fcntl(master_, F_SETFL, O_NONBLOCK);
    Path = name;
    Port = std::make_unique<QtSerialPort>(Loop, DeviceMap{{2, Path}});
    Setup.Number = 2;
  }
  ~Serial() override { Unplug(); }

  void Unplug() {
    Port->Close();
    Cut();
  }
  /// The other end goes away while the port is open.
  void Cut() {
    if (slave_ >= 0) close(slave_);
    if (master_ >= 0) close(master_);
    master_ = slave_ = -1;
  }
  void Send(std::string_view bytes) {
    ASSERT_EQ(write(master_, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  }
  std::string Sent(std::size_t expected) {
    std::string bytes;
    for (int tries = 0; tries < 200 && bytes.size() < expected; ++tries) {
      char buffer[256];
      const ssize_t count = read(master_, buffer, sizeof buffer);
      if (count > 0) bytes.append(buffer, static_cast<std::size_t>(count));
      Pump(Loop, 2);
    }
    return bytes;
  }
  /// False when it does not come about within two seconds.
  bool Within(const std::function<bool()>& done) {
    const auto end = Loop.NowMs() + 2000;
    const auto timer = Loop.MakeTimer([] {});
    timer->Start(10);
    Loop.WaitUntil([&] { return done() || Loop.NowMs() > end; });
    return done();
  }

  QtLoop Loop;
  std::string Path;
  std::unique_ptr<QtSerialPort> Port;
  platform::PortSetup Setup;
  int master_ = -1;
  int slave_ = -1;
};

TEST_F(Serial, SendsAndReceivesOverAPseudoTerminal) {
  Setup.Dtr = true;
  Setup.Rts = true;
  ASSERT_TRUE(Port->Open(Setup));
  EXPECT_TRUE(Port->IsOpen());
  Port->Write("VR(48)=10\r");
  EXPECT_EQ(Sent(10), "VR(48)=10\r");
  Send("\r\n>>");
  EXPECT_TRUE(Within([&] { return Port->BytesWaiting() == 4; }));
  EXPECT_EQ(Port->ReadAll(), "\r\n>>");
  EXPECT_EQ(Port->ReadAll(), "");
  EXPECT_EQ(Port->BytesQueued(), 0u);
}

TEST_F(Serial, TellsOfBytesFromTheLoopAndWithinItsHandlersOwnWait) {
  ASSERT_TRUE(Port->Open(Setup));
  std::string got;
  int calls = 0;
  Port->OnReceived([&] {
    ++calls;
    got += Port->ReadAll();
    if (calls > 1) return;
    Send("second");
    Loop.WaitUntil([&] { return got.size() > 5; });
  });
  Send("first");
  EXPECT_TRUE(Within([&] { return got == "firstsecond"; })) << got;
}

TEST_F(Serial, DropsNullsOnlyWhereTold) {
  ASSERT_TRUE(Port->Open(Setup));
  Send(std::string_view("A\0B", 3));
  EXPECT_TRUE(Within([&] { return Port->BytesWaiting() == 2; }));
  EXPECT_EQ(Port->ReadAll(), "AB");
  Port->Close();
  Setup.DiscardNulls = false;
  ASSERT_TRUE(Port->Open(Setup));
  Send(std::string_view("A\0B", 3));
  EXPECT_TRUE(Within([&] { return Port->BytesWaiting() == 3; }));
  EXPECT_EQ(Port->ReadAll(), std::string("A\0B", 3));
}

TEST_F(Serial, OpensForEveryHandshake) {
  using platform::Handshake;
  for (const auto handshake :
       {Handshake::None, Handshake::XonXoff, Handshake::RtsCts, Handshake::Both}) {
    Setup.Handshaking = handshake;
    EXPECT_TRUE(Port->Open(Setup)) << static_cast<int>(handshake);
    Send("x");
    EXPECT_TRUE(Within([&] { return Port->BytesWaiting() == 1; })) << static_cast<int>(handshake);
  }
}

TEST_F(Serial, TheHoldCharacterOfASoftwareHandshakeNeverReachesTheReader) {
  Setup.Handshaking = platform::Handshake::Both;
  ASSERT_TRUE(Port->Open(Setup));
  Send("\x13");
  Send(
      "\x11"
      "A");
  EXPECT_TRUE(Within([&] { return Port->BytesWaiting() > 0; }));
  EXPECT_EQ(Port->ReadAll(), "A");
}

TEST_F(Serial, ADeviceThatIsNotThereIsRefused) {
  Setup.Number = 3;
  EXPECT_FALSE(QtSerialPort(Loop, {{3, "/dev/none-such"}}).Open(Setup));
  Setup.Number = 2;
  Setup.Settings = "nonsense";
  EXPECT_FALSE(Port->Open(Setup));
  EXPECT_FALSE(Port->IsOpen());
  EXPECT_EQ(Port->ReadAll(), "");
  Port->Write("lost");
  EXPECT_EQ(Port->BytesQueued(), 0u);
}

TEST_F(Serial, APulledCableIsSilence) {
  ASSERT_TRUE(Port->Open(Setup));
  Send("last");
  EXPECT_TRUE(Within([&] { return Port->BytesWaiting() == 4; }));
  Cut();
  EXPECT_TRUE(Within([&] { return Port->Lost(); }));
  EXPECT_TRUE(Port->IsOpen());
  EXPECT_EQ(Port->ReadAll(), "last");
  Port->Write("into the void\r");
  Pump(Loop, 50);
  EXPECT_EQ(Port->BytesWaiting(), 0u);
  EXPECT_EQ(Port->BytesQueued(), 0u);
  const platform::PortLines lines = Port->Lines();
  EXPECT_FALSE(lines.Cts || lines.Dsr || lines.Carrier);
}

TEST_F(Serial, APulledCableKeepsNobodyAwake) {
  ASSERT_TRUE(Port->Open(Setup));
  Cut();
  EXPECT_TRUE(Within([&] { return Port->Lost(); }));
  Pump(Loop, 20);
  int asked = 0;
  bool over = false;
  const auto timer = Loop.MakeTimer([&] { over = true; });
  timer->Start(200);
  Loop.WaitUntil([&] {
    ++asked;
    return over;
  });
  EXPECT_LT(asked, 20);
}

/// A port by way of a link, so that the line behind it can be another one later.
class PulledCable : public Serial {
 protected:
  PulledCable() : link_("/tmp/torvane-cable-" + std::to_string(getpid())) {
    Lead(Path);
    Port = std::make_unique<QtSerialPort>(Loop, DeviceMap{{2, link_}});
  }
  ~PulledCable() override { unlink(link_.c_str()); }

  void Lead(const std::string& target) {
    unlink(link_.c_str());
    ASSERT_EQ(symlink(target.c_str(), link_.c_str()), 0);
  }
  void PullAndPutBack() {
    Cut();
    EXPECT_TRUE(Within([&] { return Port->Lost(); }));
    char name[256] = {};
    ASSERT_EQ(openpty(&master_, &slave_, name, nullptr, nullptr), 0);
    fcntl(master_, F_SETFL, O_NONBLOCK);
    Lead(name);
  }

 private:
  std::string link_;
};

TEST_F(PulledCable, IsFoundAgainByALaterWrite) {
  ASSERT_TRUE(Port->Open(Setup));
  PullAndPutBack();
  Pump(Loop, 1050);
  Port->Write("VR(19)\r");
  EXPECT_EQ(Sent(7), "VR(19)\r");
  EXPECT_FALSE(Port->Lost());
}

TEST_F(PulledCable, IsFoundAgainByAPortThatOnlyListens) {
  ASSERT_TRUE(Port->Open(Setup));
  PullAndPutBack();
  EXPECT_TRUE(Within([&] { return !Port->Lost(); }));
  Send("G00");
  EXPECT_TRUE(Within([&] { return Port->BytesWaiting() == 3; }));
  EXPECT_EQ(Port->ReadAll(), "G00");
}

}  // namespace
}  // namespace torvane::tests
