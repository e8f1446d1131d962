#include "tools/SimLine.h"

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <poll.h>
#include <sys/ioctl.h>
#include <termios.h>
#include <unistd.h>

#include "platform/RuntimeFault.h"

namespace torvane::tools {

namespace {

namespace fs = std::filesystem;

constexpr std::size_t MostUnsent = 64 * 1024;

[[noreturn]] void Fail(const std::string& path, const std::string& what) {
  throw platform::RuntimeFault(path, what + ": " + std::strerror(errno));
}

struct RateName {
  int Baud;
  speed_t Speed;
};

constexpr RateName RateNames[] = {{1200, B1200},   {2400, B2400},    {4800, B4800},
                                  {9600, B9600},   {19200, B19200},  {38400, B38400},
                                  {57600, B57600}, {115200, B115200}};

/// Bytes as they are: no echo, no translation, no flow control.
void SetRaw(int handle, const std::string& path, int baud) {
  termios settings{};
  if (tcgetattr(handle, &settings) != 0) Fail(path, "is no serial line");
  cfmakeraw(&settings);
  settings.c_cflag |= CLOCAL | CREAD;
  for (const auto& rate : RateNames) {
    if (rate.Baud != baud) continue;
    cfsetispeed(&settings, rate.Speed);
    cfsetospeed(&settings, rate.Speed);
  }
  if (tcsetattr(handle, TCSANOW, &settings) != 0) Fail(path, "does not take its settings");
}

/// Replaces a link whole, so that a reader never finds none.
void PlaceLink(const std::string& target, const std::string& link) {
  std::error_code fault;
  const auto status = fs::symlink_status(link, fault);
  if (fs::exists(status) && !fs::is_symlink(status)) {
    throw platform::RuntimeFault(link, "stands in the way and is no link");
  }
  const std::string beside = link + ".new";
  fs::remove(beside, fault);
  fs::create_symlink(target, beside, fault);
  if (!fault) fs::rename(beside, link, fault);
  if (fault) throw platform::RuntimeFault(link, "the link cannot be made: " + fault.message());
}

}  // namespace

SimLine SimLine::OnPseudoTerminal(const std::string& link) {
  SimLine line;
  line.path_ = link;
  line.handle_ = posix_openpt(O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  if (line.handle_ < 0 || grantpt(line.handle_) != 0 || unlockpt(line.handle_) != 0) {
    Fail(link, "no pseudo-terminal can be had");
  }
  std::array<char, 128> name{};
  if (ptsname_r(line.handle_, name.data(), name.size()) != 0) {
    Fail(link, "the pseudo-terminal has no name");
  }
  line.target_ = name.data();
  line.otherEnd_ = open(name.data(), O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (line.otherEnd_ < 0) Fail(link, "the pseudo-terminal cannot be opened");
  SetRaw(line.otherEnd_, link, RateNames[3].Baud);
  PlaceLink(line.target_, link);
  line.link_ = link;
  return line;
}

SimLine SimLine::OnDevice(const std::string& path, int baud) {
  SimLine line;
  line.path_ = path;
  line.handle_ = open(path.c_str(), O_RDWR | O_NOCTTY | O_NONBLOCK | O_CLOEXEC);
  if (line.handle_ < 0) Fail(path, "cannot be opened");
  SetRaw(line.handle_, path, baud);
  return line;
}

SimLine SimLine::Open(const std::string& link, const std::string& device, int baud) {
  return link.empty() ? OnDevice(device, baud) : OnPseudoTerminal(link);
}

SimLine::SimLine(SimLine&& other) noexcept
    : path_(std::move(other.path_)),
      link_(std::exchange(other.link_, {})),
      target_(std::move(other.target_)),
      unsent_(std::move(other.unsent_)),
      handle_(std::exchange(other.handle_, -1)),
      otherEnd_(std::exchange(other.otherEnd_, -1)),
      watching_(other.watching_) {}

SimLine::~SimLine() {
  std::error_code fault;
  if (!link_.empty() && fs::read_symlink(link_, fault) == target_ && !fault) {
    fs::remove(link_, fault);
  }
  if (otherEnd_ >= 0) close(otherEnd_);
  if (handle_ >= 0) close(handle_);
}

void SimLine::WatchConsole() {
  if (watching_ || otherEnd_ < 0) return;
  close(std::exchange(otherEnd_, -1));
  watching_ = true;
}

void SimLine::AwaitConsole() {
  if (!watching_) return;
  otherEnd_ = open(target_.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC);
  if (otherEnd_ < 0) Fail(path_, "the pseudo-terminal cannot be opened");
  watching_ = false;
  unsent_.clear();
}

bool SimLine::ConsoleGone() const {
  pollfd handle{handle_, POLLIN, 0};
  return watching_ && poll(&handle, 1, 0) > 0 && (handle.revents & POLLHUP) != 0 &&
         (handle.revents & POLLIN) == 0;
}

std::string SimLine::Read() {
  std::string bytes;
  std::array<char, 4096> buffer{};
  for (;;) {
    const ssize_t count = read(handle_, buffer.data(), buffer.size());
    if (count > 0) {
      bytes.append(buffer.data(), static_cast<std::size_t>(count));
      continue;
    }
    if (count < 0 && errno == EINTR) continue;
    const bool nothing =
        count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK || (errno == EIO && watching_));
    if (!nothing && bytes.empty()) Fail(path_, "the line has gone");
    return bytes;
  }
}

void SimLine::SetModemLines(bool rts, bool dtr) const {
  int on = (rts ? TIOCM_RTS : 0) | (dtr ? TIOCM_DTR : 0);
  int off = (rts ? 0 : TIOCM_RTS) | (dtr ? 0 : TIOCM_DTR);
  ioctl(handle_, TIOCMBIS, &on);
  ioctl(handle_, TIOCMBIC, &off);
}

void SimLine::SendBreak() const { tcsendbreak(handle_, 0); }

void SimLine::Write(std::string_view bytes) {
  unsent_.append(bytes);
  while (!unsent_.empty()) {
    const ssize_t count = write(handle_, unsent_.data(), unsent_.size());
    if (count > 0) {
      unsent_.erase(0, static_cast<std::size_t>(count));
    } else if (count < 0 && errno == EINTR) {
      continue;
    } else if (count < 0 &&
               (errno == EAGAIN || errno == EWOULDBLOCK || (errno == EIO && watching_))) {
      break;
    } else {
      Fail(path_, "the line has gone");
    }
  }
  if (unsent_.size() > MostUnsent) unsent_.clear();
}

}  // namespace torvane::tools
