#include "monitoring/Adapter.h"

#include <algorithm>
#include <utility>

#include "monitoring/ShdrText.h"

namespace torvane::monitoring {

namespace {

constexpr std::size_t LongestLine = 256;
constexpr std::int64_t InputWindowMs = 1000;
constexpr std::string_view Normal = "NORMAL||||";

std::string ConditionValue(std::string_view level, const ActiveMessage& message) {
  std::string value(level);
  value.append("|").append(Field(message.Code)).append("|||").append(Field(message.Text));
  return value;
}

bool Holds(const std::vector<ActiveMessage>& messages, const ActiveMessage& message) {
  return std::find(messages.begin(), messages.end(), message) != messages.end();
}

/// Adds bytes to the line of a client that they go on; true when a heartbeat has come whole.
bool TakePing(std::string& line, std::string_view bytes) {
  bool pinged = false;
  for (const char character : bytes) {
    if (character == '\n') {
      pinged = pinged || IsPing(line);
      line.clear();
    } else if (line.size() < LongestLine) {
      line += character;
    }
  }
  return pinged;
}

/// A message comes as a warning under its code and goes as a normal under the same; without any
/// left a normal without a code says that all is well.
void AppendMessages(std::string& out, std::string_view timestamp, std::string_view key,
                    const std::vector<ActiveMessage>& before,
                    const std::vector<ActiveMessage>& now) {
  if (now.empty()) {
    out += ItemLine(timestamp, key, Normal);
    return;
  }
  for (const auto& message : before) {
    const auto sameCode = [&](const ActiveMessage& other) { return other.Code == message.Code; };
    if (std::any_of(now.begin(), now.end(), sameCode)) continue;
    out += ItemLine(timestamp, key, ConditionValue("NORMAL", {message.Code, {}}));
  }
  for (const auto& message : now) {
    if (!Holds(before, message)) {
      out += ItemLine(timestamp, key, ConditionValue("WARNING", message));
    }
  }
}

}  // namespace

struct Adapter::Client {
  std::unique_ptr<platform::TcpClient> Connection;
  std::string Line;                    ///< what has come of a line of it
  std::int64_t WindowFrom = 0;         ///< ms
  std::size_t Input = 0;               ///< bytes since then
  std::optional<std::int64_t> PingMs;  ///< its last heartbeat; nothing while none has come
};

Adapter::Adapter(platform::TcpServer& server, std::function<std::int64_t()> wallMs,
                 AdapterLimits limits)
    : server_(server), wallMs_(std::move(wallMs)), limits_(limits) {}

Adapter::~Adapter() = default;

std::string Adapter::Changes(const MonitorSnapshot& before, const MonitorSnapshot& now,
                             bool everything) const {
  std::string text;
  const std::string timestamp = TimestampText(wallMs_());
  const bool afresh = everything || before.Available != now.Available;
  for (std::size_t i = 0; i < MonitorItems.size(); ++i) {
    const auto& item = MonitorItems[i];
    if (!now.Available) {
      if (afresh) text += ItemLine(timestamp, item.Key, Unavailable);
    } else if (item.Kind == ItemKind::Condition) {
      if (afresh) {
        AppendMessages(text, timestamp, item.Key, {}, now.Messages);
      } else if (before.Messages != now.Messages) {
        AppendMessages(text, timestamp, item.Key, before.Messages, now.Messages);
      }
    } else if (afresh || before.Values[i] != now.Values[i]) {
      text += ItemLine(timestamp, item.Key, now.Values[i]);
    }
  }
  return text;
}

bool Adapter::Send(Client& client, std::string_view text) const {
  if (client.Connection->BytesQueued() + text.size() > limits_.Backlog) return false;
  client.Connection->Write(text);
  return true;
}

void Adapter::Publish(const MonitorSnapshot& now) {
  if (now == shown_) return;
  const std::string text = Changes(std::exchange(shown_, now), now, false);
  if (text.empty()) return;
  std::erase_if(clients_, [&](const auto& client) { return !Send(*client, text); });
}

void Adapter::Serve(std::int64_t nowMs) {
  std::erase_if(clients_, [&](const auto& client) { return !Attend(*client, nowMs); });
  TakeClients();
}

void Adapter::TakeClients() {
  for (std::size_t taken = 0; taken < limits_.NewClients; ++taken) {
    auto connection = server_.TakeClient();
    if (connection == nullptr) return;
    if (clients_.size() >= limits_.Clients) continue;
    auto client = std::make_unique<Client>();
    client->Connection = std::move(connection);
    if (Send(*client, Changes(shown_, shown_, true))) clients_.push_back(std::move(client));
  }
}

bool Adapter::Attend(Client& client, std::int64_t nowMs) const {
  client.Connection->Flush();
  if (!client.Connection->Connected()) return false;
  const auto bytes = Input(client, nowMs);
  if (!bytes) return false;
  if (TakePing(client.Line, *bytes)) {
    client.PingMs = nowMs;
    return Send(client, PongLine(HeartbeatMs));
  }
  return !client.PingMs || nowMs - *client.PingMs <= LongestPingPauseMs;
}

std::optional<std::string> Adapter::Input(Client& client, std::int64_t nowMs) const {
  if (nowMs - client.WindowFrom >= InputWindowMs) {
    client.WindowFrom = nowMs;
    client.Input = 0;
  }
  std::string bytes = client.Connection->Read(limits_.Input);
  client.Input += bytes.size();
  if (client.Input > limits_.Input) return std::nullopt;
  return bytes;
}

}  // namespace torvane::monitoring
