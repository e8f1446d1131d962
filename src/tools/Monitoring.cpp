#include "tools/Monitoring.h"

#include <chrono>
#include <cstdio>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "core/General.h"
#include "core/ScreenNames.h"

namespace torvane::tools {

namespace {

std::int64_t WallMs() {
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  return std::chrono::duration_cast<std::chrono::milliseconds>(now).count();
}

/// "IO.5" of a help file IO\5.hlp: the number under which the controller raises the message.
std::string CodeOf(const std::string& helpPath) {
  const std::string file(core::StripExtension(core::NamePart(helpPath)));
  const auto directory = helpPath.substr(0, helpPath.size() - core::NamePart(helpPath).size());
  const std::string_view group = core::NamePart(
      std::string_view(directory).substr(0, directory.empty() ? 0 : directory.size() - 1));
  const bool numbered = core::EqualNoCase(group, "IO") || core::EqualNoCase(group, "Logic");
  return numbered ? std::string(group).append(".").append(file) : file;
}

/// The rows of the message screen while it shows: nobody else has the messages read.
std::optional<std::vector<monitoring::ActiveMessage>> ListedMessages(console::Console& console) {
  if (!console.Screens().Set().Visible(core::ScreenNames::MessageForm)) return std::nullopt;
  const auto& list = console.Screens().Messages();
  std::vector<monitoring::ActiveMessage> messages;
  messages.reserve(static_cast<std::size_t>(list.Count()));
  for (int row = 1; row <= list.Count(); ++row) {
    messages.push_back({CodeOf(list.HelpPath(row)), std::string(core::Trim(list.Row(row).Text))});
  }
  return messages;
}

}  // namespace

Monitoring::Monitoring(const platform::TcpPlace& place, platform::EventLoop& loop,
                       console::Console& console, const core::System& system)
    : server_(place),
      monitor_(loop, server_,
               {system, [&console] { return console.Trio().Answers(); },
                [&console] { return ListedMessages(console); }, WallMs}) {
  console.Poll().Observe(monitor_);
  std::printf("monitoring on %s\n", server_.Place().Text().c_str());
  std::fflush(stdout);
}

}  // namespace torvane::tools
