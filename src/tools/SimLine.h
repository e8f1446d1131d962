// The simulated controller's end of a line: a pseudo-terminal with a link to it, or a device.
#pragma once

#include <string>
#include <string_view>

namespace torvane::tools {

/// An open line. Reads and writes never block.
class SimLine {
 public:
  /// Makes a pseudo-terminal whose other end is at `link`. A link of that name is replaced;
  /// anything else of that name is left alone. Throws RuntimeFault.
  [[nodiscard]] static SimLine OnPseudoTerminal(const std::string& link);

  /// Opens a serial device at `baud`, eight bits, no parity, one stop bit. Throws RuntimeFault.
  [[nodiscard]] static SimLine OnDevice(const std::string& path, int baud);

  /// The pseudo-terminal where a link is named, otherwise the device.
  [[nodiscard]] static SimLine Open(const std::string& link, const std::string& device, int baud);

  SimLine(SimLine&& other) noexcept;
  SimLine(const SimLine&) = delete;
  SimLine& operator=(const SimLine&) = delete;
  SimLine& operator=(SimLine&&) = delete;
  /// Closes, and takes the link away if it still leads here.
  ~SimLine();

  /// What to wait on.
  [[nodiscard]] int Handle() const { return handle_; }
  [[nodiscard]] bool WantsToWrite() const { return !unsent_.empty(); }

  /// Watches for the console's leaving, from when it is known to be there until AwaitConsole is
  /// called. A device does not show it.
  void WatchConsole();
  void AwaitConsole();
  /// The console that is watched has closed the line.
  [[nodiscard]] bool ConsoleGone() const;

  /// All that waits. Throws RuntimeFault where the device has gone.
  [[nodiscard]] std::string Read();

  /// Sends, keeping what the line does not take yet. Bytes that nobody reads for long are dropped.
  void Write(std::string_view bytes);

  /// The modem lines that the other end sees as its CTS and DSR. Nothing on a pseudo-terminal,
  /// which has none.
  void SetModemLines(bool rts, bool dtr) const;
  /// Holds the line for a quarter of a second. Nothing on a pseudo-terminal.
  void SendBreak() const;

 private:
  SimLine() = default;

  std::string path_;    ///< for messages
  std::string link_;    ///< empty for a device
  std::string target_;  ///< where the link leads
  std::string unsent_;
  int handle_ = -1;
  int otherEnd_ = -1;  ///< keeps a pseudo-terminal alive while nobody has it open
  bool watching_ = false;
};

}  // namespace torvane::tools
