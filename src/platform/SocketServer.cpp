#include "platform/SocketServer.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <utility>

#include <netdb.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/socket.h>
#include <unistd.h>

#include "platform/RuntimeFault.h"

namespace torvane::platform {

namespace {

constexpr int Backlog = 16;  // clients that may wait to be taken

struct SocketOption {
  int Level;
  int Name;
  int Value;
};
/// A client whose computer has vanished without a word is found out in a minute and a half, though
/// there is nothing to tell it: times in seconds.
constexpr std::array<SocketOption, 5> ClientOptions = {{
    {IPPROTO_TCP, TCP_NODELAY, 1},
    {SOL_SOCKET, SO_KEEPALIVE, 1},
    {IPPROTO_TCP, TCP_KEEPIDLE, 60},
    {IPPROTO_TCP, TCP_KEEPINTVL, 10},
    {IPPROTO_TCP, TCP_KEEPCNT, 3},
}};

class SocketClient final : public TcpClient {
 public:
  explicit SocketClient(int handle) : handle_(handle) {}
  ~SocketClient() override { close(handle_); }
  SocketClient(const SocketClient&) = delete;
  SocketClient& operator=(const SocketClient&) = delete;

  [[nodiscard]] bool Connected() const override { return connected_; }

  [[nodiscard]] std::string Read(std::size_t most) override {
    std::array<char, 1024> bytes{};
    const ssize_t count = recv(handle_, bytes.data(), std::min(most, bytes.size()), MSG_DONTWAIT);
    if (count > 0) return {bytes.data(), static_cast<std::size_t>(count)};
    if (count == 0 || !Later()) connected_ = false;
    return {};
  }

  void Write(std::string_view bytes) override {
    unsent_.append(bytes);
    Flush();
  }

  [[nodiscard]] std::size_t BytesQueued() const override { return unsent_.size(); }

  void Flush() override {
    while (connected_ && !unsent_.empty()) {
      const ssize_t count =
          send(handle_, unsent_.data(), unsent_.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
      if (count > 0) {
        unsent_.erase(0, static_cast<std::size_t>(count));
      } else if (!Later()) {
        connected_ = false;
      } else {
        return;
      }
    }
  }

 private:
  [[nodiscard]] static bool Later() {
    return errno == EAGAIN || errno == EWOULDBLOCK || errno == EINTR;
  }

  int handle_;
  std::string unsent_;
  bool connected_ = true;
};

[[noreturn]] void Fail(const TcpPlace& place, int error) {
  throw RuntimeFault("monitoring on " + place.Text(), std::strerror(error));
}

struct AddressInfo {
  explicit AddressInfo(const TcpPlace& place) {
    addrinfo hints{};
    hints.ai_socktype = SOCK_STREAM;
    hints.ai_flags = AI_NUMERICHOST | AI_NUMERICSERV | AI_PASSIVE;
    const std::string port = std::to_string(place.Port);
    if (getaddrinfo(place.Address.c_str(), port.c_str(), &hints, &First) != 0) Fail(place, EINVAL);
  }
  ~AddressInfo() { freeaddrinfo(First); }
  AddressInfo(const AddressInfo&) = delete;
  AddressInfo& operator=(const AddressInfo&) = delete;

  addrinfo* First = nullptr;
};

std::uint16_t PortOf(int handle) {
  sockaddr_storage address{};
  socklen_t size = sizeof(address);
  if (getsockname(handle, reinterpret_cast<sockaddr*>(&address), &size) != 0) return 0;
  std::uint16_t port = 0;
  if (address.ss_family == AF_INET6) {
    port = reinterpret_cast<const sockaddr_in6*>(&address)->sin6_port;
  } else {
    port = reinterpret_cast<const sockaddr_in*>(&address)->sin_port;
  }
  return ntohs(port);
}

}  // namespace

std::string TcpPlace::Text() const {
  const bool six = Address.find(':') != std::string::npos;
  std::string text = six ? "[" + Address + "]" : Address;
  return text.append(":").append(std::to_string(Port));
}

bool ParseTcpPlace(const std::string& text, TcpPlace& place) {
  TcpPlace read;
  std::string port = text;
  const auto colon = text.rfind(':');
  if (colon != std::string::npos) {
    read.Address = text.substr(0, colon);
    port = text.substr(colon + 1);
    const bool bracketed = read.Address.starts_with('[') && read.Address.ends_with(']');
    if (bracketed) read.Address = read.Address.substr(1, read.Address.size() - 2);
    if (!bracketed && read.Address.find(':') != std::string::npos) return false;
    if (read.Address == "localhost") read.Address = TcpPlace{}.Address;
  }
  const char* const end = port.data() + port.size();
  const auto [stopped, error] = std::from_chars(port.data(), end, read.Port);
  if (error != std::errc() || stopped != end) return false;
  addrinfo hints{};
  hints.ai_flags = AI_NUMERICHOST;
  addrinfo* found = nullptr;
  if (read.Address.empty() || getaddrinfo(read.Address.c_str(), nullptr, &hints, &found) != 0) {
    return false;
  }
  freeaddrinfo(found);
  place = read;
  return true;
}

SocketServer::SocketServer(TcpPlace place) : place_(std::move(place)) {
  const AddressInfo address(place_);
  const addrinfo& first = *address.First;
  handle_ = socket(first.ai_family, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
  if (handle_ < 0) Fail(place_, errno);
  const int on = 1;
  setsockopt(handle_, SOL_SOCKET, SO_REUSEADDR, &on, sizeof(on));
  if (bind(handle_, first.ai_addr, first.ai_addrlen) != 0 || listen(handle_, Backlog) != 0) {
    const int error = errno;
    close(handle_);
    Fail(place_, error);
  }
  place_.Port = PortOf(handle_);
}

SocketServer::~SocketServer() { close(handle_); }

std::unique_ptr<TcpClient> SocketServer::TakeClient() {
  const int client = accept4(handle_, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
  if (client < 0) return nullptr;
  for (const auto& option : ClientOptions) {
    setsockopt(client, option.Level, option.Name, &option.Value, sizeof(option.Value));
  }
  return std::make_unique<SocketClient>(client);
}

}  // namespace torvane::platform
