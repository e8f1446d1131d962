// Clients of a listener that a test plays: what each has been sent, and how much of it it takes.
#pragma once

#include <algorithm>
#include <deque>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/TcpServer.h"

namespace torvane::tests {

/// The client's end, which outlives its connection.
struct ScriptedPeer {
  std::string ToServer;
  std::string Queued;
  std::string Taken;
  bool Reads = true;
  bool Connected = true;
  bool Closed = false;  ///< by the server
  std::size_t MostQueued = 0;

  void Take() {
    Taken += Queued;
    Queued.clear();
  }
  /// The last value of each item that it knows; for a condition all of its fields.
  [[nodiscard]] std::map<std::string, std::string> State() const {
    std::map<std::string, std::string> state;
    std::size_t at = 0;
    for (auto end = Taken.find('\n'); end != std::string::npos; end = Taken.find('\n', at)) {
      const std::string line = Taken.substr(at, end - at);
      at = end + 1;
      const auto key = line.find('|');
      if (line.starts_with('*') || key == std::string::npos) continue;
      const auto value = line.find('|', key + 1);
      state[line.substr(key + 1, value - key - 1)] = line.substr(value + 1);
    }
    return state;
  }
};

class ScriptedServer final : public platform::TcpServer {
 public:
  std::shared_ptr<ScriptedPeer> Connect() {
    auto peer = std::make_shared<ScriptedPeer>();
    waiting_.push_back(peer);
    return peer;
  }
  [[nodiscard]] std::size_t Waiting() const { return waiting_.size(); }

  [[nodiscard]] std::unique_ptr<platform::TcpClient> TakeClient() override {
    if (waiting_.empty()) return nullptr;
    auto client = std::make_unique<Client>(waiting_.front());
    waiting_.pop_front();
    return client;
  }

 private:
  class Client final : public platform::TcpClient {
   public:
    explicit Client(std::shared_ptr<ScriptedPeer> peer) : peer_(std::move(peer)) {}
    ~Client() override { peer_->Closed = true; }
    [[nodiscard]] bool Connected() const override { return peer_->Connected; }
    [[nodiscard]] std::string Read(std::size_t most) override {
      const std::string bytes = peer_->ToServer.substr(0, most);
      peer_->ToServer.erase(0, bytes.size());
      return bytes;
    }
    void Write(std::string_view bytes) override {
      peer_->Queued += bytes;
      peer_->MostQueued = std::max(peer_->MostQueued, peer_->Queued.size());
      Flush();
    }
    [[nodiscard]] std::size_t BytesQueued() const override { return peer_->Queued.size(); }
    void Flush() override {
      if (peer_->Reads) peer_->Take();
    }

   private:
    std::shared_ptr<ScriptedPeer> peer_;
  };

  std::deque<std::shared_ptr<ScriptedPeer>> waiting_;
};

}  // namespace torvane::tests
