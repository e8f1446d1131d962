// Settings of the second serial port, over which programs come and go, and how a transfer goes.
#pragma once

#include <bitset>
#include <cstdint>
#include <string>
#include <string_view>

namespace torvane::core {

/// Single bytes, as a set.
class CharacterSet {
 public:
  void Add(char character) { set_.set(static_cast<unsigned char>(character)); }
  [[nodiscard]] bool Holds(char character) const {
    return set_.test(static_cast<unsigned char>(character));
  }
  [[nodiscard]] bool Empty() const { return set_.none(); }
  bool operator==(const CharacterSet&) const = default;

 private:
  std::bitset<256> set_;
};

/// What lets a program go out once it has been offered, the numbers as the port file has them.
enum class StartMode : std::int16_t {
  Never = 0,      ///< only the operator
  Character = 1,  ///< the start character has come
  AnyData = 2,    ///< anything has come
  Cts = 3,        ///< CTS has changed
  Dsr = 4,        ///< DSR has changed
  Event = 5,      ///< anything has happened on the port
  Force = 6,      ///< at once with a hardware handshake, else as Event
};

/// Control.cms.
struct TransferSettings {
  std::int16_t CommsPort = 0;       ///< below 1: the port is not used
  std::string CommsSettings;        ///< baud,parity,data,stop
  std::int16_t CommsHandshake = 0;  ///< 0 none, 1 XON/XOFF, 2 RTS/CTS, 3 both
  bool CommsDtrKeyword = false;     ///< kept, no use: the port always has DTR and RTS on
  StartMode CommsStartMode = StartMode::Never;
  std::string CommsStartChar;       ///< one character, or nothing
  std::string CommsPreamble;        ///< goes out before a program
  std::string CommsEndOfLine;       ///< goes out in place of each carriage return
  std::string CommsPostamble;       ///< goes out after a program; ends a received one
  std::string CommsReceiveMark;     ///< looked for in what comes, without effect
  CharacterSet CommsSendFilter;     ///< never sent
  CharacterSet CommsReceiveFilter;  ///< never stored
  std::int32_t CommsReserved1 = 0;  ///< 0 to 65535, no use
  std::int32_t CommsReserved2 = 0;  ///< no use
};

/// Where a send is; see files/ProgramSender.h for what leads from one to the next.
enum class SendPhase : std::int16_t { Idle = 0, WaitingForStart = 1, Sending = 2, Postamble = 3 };

/// State of both directions.
struct TransferState {
  core::SendPhase SendPhase = core::SendPhase::Idle;
  bool SendStart = false;  ///< the start condition has been met
  bool SendAbort = false;
  bool SendHeader = false;   ///< never set: kept for a counterpart that asks for the header
  bool ReceiveOpen = false;  ///< Receive.tmp takes what comes
  std::string ReceiveFile;   ///< path of Receive.tmp
  std::string ReceiveNote;   ///< path of Receive.hlp
};

}  // namespace torvane::core
