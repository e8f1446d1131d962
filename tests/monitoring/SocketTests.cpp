// The adapter on real sockets: fifty clients, one that never reads, one that sends megabytes, and a
// thousand connections.
#include <array>
#include <memory>
#include <string>
#include <vector>

#include <arpa/inet.h>
#include <gtest/gtest.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include "monitoring/Adapter.h"
#include "platform/RuntimeFault.h"
#include "platform/SocketServer.h"

namespace torvane::monitoring {
namespace {

class Peer {
 public:
  explicit Peer(std::uint16_t port) : handle_(socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK, 0)) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(port);
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    connect(handle_, reinterpret_cast<const sockaddr*>(&address), sizeof(address));
  }
  ~Peer() { close(handle_); }
  Peer(const Peer&) = delete;
  Peer& operator=(const Peer&) = delete;

  void Read() {
    std::array<char, 4096> bytes{};
    for (;;) {
      const ssize_t count = recv(handle_, bytes.data(), bytes.size(), 0);
      if (count == 0 || (count < 0 && errno != EAGAIN)) Gone = true;
      if (count <= 0) return;
      Taken.append(bytes.data(), static_cast<std::size_t>(count));
    }
  }
  std::size_t Send(std::size_t size) {
    const std::string bytes(size, 'x');
    const ssize_t count = send(handle_, bytes.data(), bytes.size(), MSG_NOSIGNAL);
    return count > 0 ? static_cast<std::size_t>(count) : 0;
  }
  [[nodiscard]] std::uint16_t Port() const {
    sockaddr_in address{};
    socklen_t size = sizeof(address);
    getsockname(handle_, reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
  }
  void Say(const std::string& text) { send(handle_, text.data(), text.size(), MSG_NOSIGNAL); }

  std::string Taken;
  bool Gone = false;

 private:
  int handle_;
};

/// The other end of the peer's connection, which is in this process too; below 0 where there is
/// none.
int ServersEnd(const Peer& peer) {
  for (int handle = 0; handle < 1024; ++handle) {
    sockaddr_in address{};
    socklen_t size = sizeof(address);
    const bool connected = getpeername(handle, reinterpret_cast<sockaddr*>(&address), &size) == 0;
    if (connected && ntohs(address.sin_port) == peer.Port()) return handle;
  }
  return -1;
}

int Option(int handle, int level, int name) {
  int value = -1;
  socklen_t size = sizeof(value);
  getsockopt(handle, level, name, &value, &size);
  return value;
}

struct OnSockets : ::testing::Test {
  std::unique_ptr<Peer> Connect() { return std::make_unique<Peer>(Server.Place().Port); }
  void Serve(int times = 1) {
    for (int i = 0; i < times; ++i) TheAdapter.Serve(NowMs += 10);
  }
  /// Until so many clients are there; false when they do not come.
  bool Await(std::size_t clients) {
    for (int i = 0; i < 20'000 && TheAdapter.Clients() != clients; ++i) Serve();
    return TheAdapter.Clients() == clients;
  }
  void Publish(int x) {
    MonitorSnapshot snapshot;
    snapshot.Available = true;
    for (auto& value : snapshot.Values) value = std::to_string(x);
    TheAdapter.Publish(snapshot);
  }

  platform::SocketServer Server{platform::TcpPlace{}};
  Adapter TheAdapter{Server, [] { return std::int64_t{0}; }};
  std::int64_t NowMs = 0;
};

TEST_F(OnSockets, FiftyClientsKnowTheLastState) {
  std::vector<std::unique_ptr<Peer>> peers;
  peers.reserve(50);
  for (int i = 0; i < 50; ++i) {
    peers.push_back(Connect());
    ASSERT_TRUE(Await(peers.size()));
  }
  for (int x = 0; x < 100; ++x) Publish(x);
  for (auto& peer : peers) {
    for (int i = 0; i < 1000 && peer->Taken.find("Xact|99\n") == std::string::npos; ++i) {
      Serve();
      peer->Read();
    }
    EXPECT_NE(peer->Taken.find("Xact|99\n"), std::string::npos);
  }
}

TEST_F(OnSockets, OneThatNeverReadsIsDropped) {
  const auto peer = Connect();
  ASSERT_TRUE(Await(1));
  int x = 0;
  for (; x < 200'000 && TheAdapter.Clients() == 1; ++x) Publish(x);
  EXPECT_EQ(TheAdapter.Clients(), 0U);
}

TEST_F(OnSockets, OneThatSendsMegabytesIsDropped) {
  const auto peer = Connect();
  ASSERT_TRUE(Await(1));
  std::size_t sent = 0;
  for (int i = 0; i < 1000 && TheAdapter.Clients() == 1; ++i) {
    sent += peer->Send(1U << 20U);
    Serve();
  }
  EXPECT_EQ(TheAdapter.Clients(), 0U);
  EXPECT_GT(sent, 4096U);
}

TEST_F(OnSockets, AThousandConnectionsComeAndGo) {
  for (int i = 0; i < 1000; ++i) {
    const auto peer = Connect();
    Serve(2);
  }
  EXPECT_TRUE(Await(0));
  const auto peer = Connect();
  EXPECT_TRUE(Await(1)) << "it listens still";
  peer->Say("* PING\n");
  for (int i = 0; i < 1000 && peer->Taken.find("PONG") == std::string::npos; ++i) {
    Serve();
    peer->Read();
  }
  EXPECT_NE(peer->Taken.find("* PONG 10000\n"), std::string::npos);
}

/// Without this a computer that is switched off keeps its place for as long as nothing changes.
TEST_F(OnSockets, ASilentConnectionIsProbedAfterAMinute) {
  const auto peer = Connect();
  ASSERT_TRUE(Await(1));
  const int end = ServersEnd(*peer);
  ASSERT_GE(end, 0);
  EXPECT_EQ(Option(end, SOL_SOCKET, SO_KEEPALIVE), 1);
  EXPECT_EQ(Option(end, IPPROTO_TCP, TCP_KEEPIDLE), 60);
  EXPECT_EQ(Option(end, IPPROTO_TCP, TCP_KEEPINTVL), 10);
  EXPECT_EQ(Option(end, IPPROTO_TCP, TCP_KEEPCNT), 3);
}

TEST_F(OnSockets, APlaceThatIsTakenIsOneSentence) {
  try {
    const platform::SocketServer second(Server.Place());
    FAIL() << "two servers on one port";
  } catch (const platform::RuntimeFault& fault) {
    EXPECT_EQ(std::string(fault.what()),
              "monitoring on " + Server.Place().Text() + ": Address already in use");
  }
}

struct PlaceRow {
  const char* Text;
  const char* Read;  ///< empty: refused
};
constexpr PlaceRow PlaceRows[] = {
    {"7878", "127.0.0.1:7878"},
    {"0", "127.0.0.1:0"},
    {"localhost:7878", "127.0.0.1:7878"},
    {"0.0.0.0:7878", "0.0.0.0:7878"},
    {"192.168.1.5:80", "192.168.1.5:80"},
    {"[::1]:7878", "[::1]:7878"},
    {"", ""},
    {"port", ""},
    {"70000", ""},
    {"-1", ""},
    {"7878x", ""},
    {":7878", ""},
    {"127.0.0.1:", ""},
    {"::1:7878", ""},
    {"machine.example:7878", ""},
    {"300.0.0.1:7878", ""},
};

TEST(TcpPlace, IsAnAddressAndAPortOrAPortAlone) {
  for (const auto& row : PlaceRows) {
    platform::TcpPlace place;
    const bool read = platform::ParseTcpPlace(row.Text, place);
    EXPECT_EQ(read ? place.Text() : "", row.Read) << row.Text;
  }
}

}  // namespace
}  // namespace torvane::monitoring
