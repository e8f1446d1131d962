#include "files/CommsModule.h"

#include "core/SettingsModule.h"
#include "files/FaultNote.h"
#include "files/TransferPort.h"

namespace torvane::files {

CommsModule::CommsModule(core::System& system, platform::EventLoop& loop,
                         platform::FileSystem& files, platform::SerialPort& port)
    : system_(system),
      files_(files),
      port_(port),
      receiver_(system, files),
      sender_(system, loop, files, port) {
  port_.OnReceived([this] { HandleReceived(); });
}

CommsModule::~CommsModule() { port_.OnReceived({}); }

/// The port serves the sender for the life of this. Only then are its modem lines watched.
class CommsModule::Sending {
 public:
  explicit Sending(CommsModule& module) : module_(module) {
    module_.sending_ = true;
    module_.port_.OnLineEvent(
        [this](platform::LineEvent event) { module_.sender_.HandleLineEvent(event); });
  }
  ~Sending() {
    module_.sending_ = false;
    module_.port_.OnLineEvent({});
  }
  Sending(const Sending&) = delete;
  Sending& operator=(const Sending&) = delete;

 private:
  CommsModule& module_;
};

void CommsModule::LoadSettings() {
  core::LoadTransferSettings(files_, system_.Directories, system_.Comms);
  auto& transfer = system_.Transfer;
  transfer.SendPhase = core::SendPhase::Idle;
  transfer.SendStart = false;
  transfer.SendAbort = false;
  transfer.SendHeader = false;
}

void CommsModule::SetUpReceiver() {
  receiver_.SetUp();
  const int number = system_.Comms.CommsPort;
  if (number >= 1 && !PortUsed()) {
    NoteFault(files_, system_.Directories,
              "Control.cms names port " + std::to_string(number) +
                  ", which is the controller's; no programs are sent or received");
  }
  OpenReceiver();
}

bool CommsModule::PortUsed() const {
  return system_.Comms.CommsPort >= 1 && system_.Comms.CommsPort != system_.Link.CommPort;
}

void CommsModule::OpenReceiver() {
  if (!PortUsed() || closed_ || port_.IsOpen()) return;
  if (port_.Open(TransferPort(system_.Comms, true))) return;
  NoteFault(files_, system_.Directories,
            "port " + std::to_string(system_.Comms.CommsPort) + " cannot be opened for receiving");
}

void CommsModule::HandleReceived() {
  if (sending_) return sender_.HandleReceived();
  const std::string came = port_.ReadAll();
  if (!screenUp_ && !closed_) receiver_.ReceiveChars(came);
}

void CommsModule::BeginSending() {
  screenUp_ = true;
  port_.Close();
  receiver_.Abandon();
  system_.Transfer.SendPhase = core::SendPhase::Idle;
}

void CommsModule::SendPrograms(const std::vector<SendItem>& items, SendScreen& screen) {
  if (sending_ || !PortUsed()) return;
  {
    const Sending sending(*this);
    for (const SendItem& item : items) {
      if (!screenUp_ || closed_) break;
      sender_.SendProgram(item, screen);
    }
  }
  if (!screenUp_) OpenReceiver();
}

void CommsModule::EndSending() {
  screenUp_ = false;
  if (sending_) return Abort();  // the receiver opens when the send has ended
  OpenReceiver();
}

void CommsModule::Close() {
  closed_ = true;
  Abort();
  port_.Close();
  receiver_.Close();
}

}  // namespace torvane::files
