#include "tools/SimulatedOffice.h"

#include "core/Numbers.h"
#include "core/TransferFile.h"
#include "simulator/OfficeCommands.h"

namespace torvane::tools {

namespace {

constexpr const char* SettingsFile = "Control.cms";

core::TransferSettings SettingsOf(const platform::FileSystem& files) {
  if (!files.FileExists(SettingsFile)) return {};
  return core::ReadTransferFile(files.ReadFile(SettingsFile));
}

}  // namespace

SimulatedOffice::SimulatedOffice(platform::EventLoop& loop, const platform::FileSystem& files)
    : files_(files),
      settings_(SettingsOf(files)),
      peer_(settings_),
      port_(loop, peer_, core::LeadingNumber(settings_.CommsSettings)) {}

simulator::OperatorAnswer SimulatedOffice::Obey(std::string_view command) {
  auto answer = simulator::CarryOutOfficeCommand(command, peer_, files_);
  port_.Wake();
  return answer;
}

}  // namespace torvane::tools
