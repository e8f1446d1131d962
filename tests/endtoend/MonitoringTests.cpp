// The real console with --monitor, and a client that watches a run over TCP.
#include <array>
#include <chrono>
#include <string>

#include <arpa/inet.h>
#include <gmock/gmock.h>
#include <netinet/in.h>
#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include "Programs.h"

namespace torvane::tests {
namespace {

using ::testing::HasSubstr;

constexpr int LongMs = 60000;

struct MonitoredProcess : EndToEnd {
  ~MonitoredProcess() override {
    if (handle_ >= 0) close(handle_);
  }
  void ConnectTo(int port) {
    handle_ = socket(AF_INET, SOCK_STREAM, 0);
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    ASSERT_EQ(connect(handle_, reinterpret_cast<const sockaddr*>(&address), sizeof(address)), 0);
  }
  int PortOfConsole() {
    const std::string mark = "monitoring on 127.0.0.1:";
    EXPECT_TRUE(Console.WaitFor(mark, LongMs));
    EXPECT_TRUE(Console.WaitFor("\n", LongMs));
    const std::string output = Console.Output();
    return std::stoi(output.substr(output.find(mark) + mark.size()));
  }
  /// Reads until the text has come behind what was waited for before, or the console closes.
  bool Sees(const std::string& text) {
    const auto until = std::chrono::steady_clock::now() + std::chrono::milliseconds(LongMs);
    while (std::chrono::steady_clock::now() < until) {
      const auto found = seen_.find(text, waited_);
      if (found != std::string::npos) {
        waited_ = found + text.size();
        return true;
      }
      pollfd waiting{handle_, POLLIN, 0};
      if (::poll(&waiting, 1, 100) <= 0) continue;
      std::array<char, 4096> bytes{};
      const ssize_t count = recv(handle_, bytes.data(), bytes.size(), 0);
      if (count <= 0) return seen_.find(text, waited_) != std::string::npos;
      seen_.append(bytes.data(), static_cast<std::size_t>(count));
    }
    return false;
  }

  int handle_ = -1;
  std::string seen_;
  std::size_t waited_ = 0;
};

TEST_F(MonitoredProcess, AClientSeesARunBeginAndEndAndTheConsoleGo) {
  Console.Start(TORVANE_PROGRAM,
                {"--simulate", "--speed", "5", "--window", "1024x768", "--monitor", "0", "--select",
                 "SHOP/STAR", "--start", "--exit-after-run", Place("installation")});
  ConnectTo(PortOfConsole());
  EXPECT_TRUE(Sees("|avail|UNAVAILABLE\n"));
  EXPECT_TRUE(Sees("|avail|AVAILABLE\n"));
  EXPECT_TRUE(Sees("|execution|ACTIVE\n")) << seen_;
  EXPECT_TRUE(Sees("|execution|PROGRAM_COMPLETED\n")) << seen_;
  EXPECT_TRUE(Sees("|avail|UNAVAILABLE\n"));
  EXPECT_EQ(Console.WaitForEnd(LongMs), 0);
  EXPECT_NE(seen_.find("|program|SHOP/STAR\n"), std::string::npos);
}

TEST_F(MonitoredProcess, APortThatIsTakenEndsTheStartWithOneSentence) {
  Directory.Put("keys.txt", "patience 20000\nwait-form FrontEnd\npause 600000\n");
  Console.Start(TORVANE_PROGRAM, {"--simulate", "--window", "1024x768", "--monitor", "0", "--keys",
                                  Place("keys.txt"), Place("installation")});
  const std::string port = std::to_string(PortOfConsole());
  Directory.MakeDirectory("second");
  RunningProgram second("the second torvane");
  second.Start(TORVANE_PROGRAM, {"--simulate", "--monitor", port, Place("second")});
  EXPECT_EQ(second.WaitForEnd(LongMs), 1);
  EXPECT_THAT(second.Errors(),
              HasSubstr("torvane: monitoring on 127.0.0.1:" + port + ": Address already in use\n"));
}

}  // namespace
}  // namespace torvane::tests
