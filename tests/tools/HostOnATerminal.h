// A host of a simulated other end on a pseudo-terminal, with a keyboard and a line to it.
#pragma once

#include <array>
#include <memory>
#include <sstream>
#include <string>
#include <string_view>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include "support/TempDirectory.h"

namespace torvane::tools {

template <class Host>
class HostOnATerminal : public ::testing::Test {
 protected:
  HostOnATerminal() { EXPECT_EQ(pipe(keyboard_.data()), 0); }
  ~HostOnATerminal() override {
    HangUp();
    close(keyboard_[0]);
    close(keyboard_[1]);
  }

  /// What the host is to listen on, under this name.
  [[nodiscard]] std::string Link() const { return temp_.Path() + "/line"; }
  /// A host with these options, and the line to it.
  template <class Options>
  void Begin(const Options& options) {
    host_ = std::make_unique<Host>(options, keyboard_[0], out_);
    Connect();
  }
  void Connect() {
    line_ = open(Link().c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK);
    EXPECT_GE(line_, 0);
  }
  void HangUp() {
    if (line_ >= 0) close(line_);
    line_ = -1;
  }

  /// The operator types.
  void Type(std::string_view text) { WriteTo(keyboard_[1], text); }
  /// The console sends.
  void Send(std::string_view bytes) { WriteTo(line_, bytes); }
  /// What the console gets in one step.
  std::string Step() {
    host_->Step(5);
    std::array<char, 256> buffer{};
    const ssize_t count = read(line_, buffer.data(), buffer.size());
    return count > 0 ? std::string(buffer.data(), static_cast<std::size_t>(count)) : std::string();
  }
  /// A command and its answer, with the prompt.
  std::string Exchange(const std::string& command) {
    Send(command + "\r");
    std::string answer;
    for (int i = 0; i < 200 && !answer.ends_with(">>"); ++i) answer += Step();
    return answer;
  }

  tests::TempDirectory temp_;
  std::array<int, 2> keyboard_{};
  std::ostringstream out_;
  std::unique_ptr<Host> host_;
  int line_ = -1;

 private:
  static void WriteTo(int handle, std::string_view bytes) {
    EXPECT_EQ(write(handle, bytes.data(), bytes.size()), static_cast<ssize_t>(bytes.size()));
  }
};

}  // namespace torvane::tools
