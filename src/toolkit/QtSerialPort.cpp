#include "toolkit/QtSerialPort.h"

#include <QSerialPort>
#include <QThread>
#include <algorithm>

#include "platform/LineWatch.h"

#ifndef _WIN32
#include <sys/ioctl.h>
#include <termios.h>
#endif
#ifdef __linux__
#include <linux/serial.h>
#endif

namespace torvane::toolkit {

namespace {

/// How often the modem lines are looked at, ms.
constexpr int LinesPeriodMs = 100;

/// How long a close waits for what is still in the driver, ms: some fifty characters at 9600 baud.
constexpr int CloseMs = 50;

/// At most so often is a lost device tried again, ms.
constexpr std::int64_t RetryMs = 1000;

QSerialPort::Parity ParityOf(char letter) {
  switch (letter) {
    case 'E':
      return QSerialPort::EvenParity;
    case 'O':
      return QSerialPort::OddParity;
    case 'M':
      return QSerialPort::MarkParity;
    case 'S':
      return QSerialPort::SpaceParity;
    default:
      return QSerialPort::NoParity;
  }
}

QSerialPort::StopBits StopBitsOf(double bits) {
  if (bits == 2) return QSerialPort::TwoStop;
  return bits == 1.5 ? QSerialPort::OneAndHalfStop : QSerialPort::OneStop;
}

/// Breaks that the driver has counted; 0 where it counts none, as on a pseudo-terminal.
int BreaksCounted([[maybe_unused]] const QSerialPort& port) {
#ifdef __linux__
  serial_icounter_struct counted{};
  if (ioctl(port.handle(), TIOCGICOUNT, &counted) == 0) return counted.brk;
#endif
  return 0;
}

/// Both kinds of handshake at once is more than the port class knows: the codes are added to the
/// wires.
void AddSoftwareHandshake([[maybe_unused]] const QSerialPort& port) {
#ifndef _WIN32
  termios settings{};
  if (tcgetattr(port.handle(), &settings) != 0) return;
  settings.c_iflag |= IXON | IXOFF;
  tcsetattr(port.handle(), TCSANOW, &settings);
#endif
}

}  // namespace

struct QtSerialPort::Device {
  platform::EventLoop& Loop;
  DeviceMap Devices;
  QSerialPort Port;
  platform::PortSetup Setup;
  SerialSettings Settings;
  std::string Input;
  std::function<void()> Received;
  std::function<void(platform::LineEvent)> LineHandler;
  std::unique_ptr<platform::Timer> LinesTimer;
  std::unique_ptr<platform::Timer> RetryTimer;
  platform::LineWatch Watch;
  std::int64_t NextTry = 0;
  bool Opened = false;
  bool Gone = false;
  bool Told = false;
  std::shared_ptr<int> Alive = std::make_shared<int>(0);

  Device(platform::EventLoop& loop, DeviceMap devices) : Loop(loop), Devices(std::move(devices)) {
    QObject::connect(&Port, &QSerialPort::readyRead, [this] { Arrived(); });
    QObject::connect(&Port, &QSerialPort::errorOccurred,
                     [this](QSerialPort::SerialPortError error) { Failed(error); });
    LinesTimer = Loop.MakeTimer([this] { LookAtLines(); });
    RetryTimer = Loop.MakeTimer([this] {
      if (Back()) RetryTimer->Stop();
    });
  }

  ~Device() { Port.disconnect(); }

  [[nodiscard]] bool UsesWires() const {
    return (static_cast<int>(Setup.Handshaking) & static_cast<int>(platform::Handshake::RtsCts)) !=
           0;
  }

  bool OpenDevice() {
    Port.setPortName(QString::fromLocal8Bit(DeviceOf(Setup.Number, Devices).c_str()));
    Port.setBaudRate(Settings.Baud);
    Port.setDataBits(static_cast<QSerialPort::DataBits>(Settings.DataBits));
    Port.setParity(ParityOf(Settings.Parity));
    Port.setStopBits(StopBitsOf(Settings.StopBits));
    const bool wires = UsesWires();
    const bool codes = Setup.Handshaking == platform::Handshake::XonXoff;
    Port.setFlowControl(wires   ? QSerialPort::HardwareControl
                        : codes ? QSerialPort::SoftwareControl
                                : QSerialPort::NoFlowControl);
    if (!Port.open(QIODevice::ReadWrite)) return false;
    if (Setup.Handshaking == platform::Handshake::Both) AddSoftwareHandshake(Port);
    // A device without modem lines (a pseudo-terminal) refuses these, and does well without.
    Port.clear(QSerialPort::Input);  // what came while nobody listened
    Port.setDataTerminalReady(Setup.Dtr);
    if (!wires) Port.setRequestToSend(Setup.Rts);
    Port.clearError();
    return true;
  }

  /// Takes what the driver has, without nulls where they are not wanted.
  void Take() {
    if (Gone || !Port.isOpen() || Port.bytesAvailable() == 0) return;
    const QByteArray bytes = Port.readAll();
    Input.reserve(Input.size() + static_cast<std::size_t>(bytes.size()));
    for (const char byte : bytes) {
      if (byte != '\0' || !Setup.DiscardNulls) Input += byte;
    }
  }

  /// The handler runs from the loop, so that it may wait and be told of more in that wait.
  void Arrived() {
    Take();
    if (Input.empty() || !Received || std::exchange(Told, true)) return;
    Loop.Post([this, alive = std::weak_ptr<int>(Alive)] {
      if (alive.expired()) return;
      Told = false;
      if (Input.empty()) return;
      if (const auto handler = Received) handler();
    });
  }

  void Failed(QSerialPort::SerialPortError error) {
    const bool lost = error == QSerialPort::ResourceError || error == QSerialPort::ReadError ||
                      error == QSerialPort::WriteError || error == QSerialPort::DeviceNotFoundError;
    if (!lost || !Opened || Gone) return;
    Gone = true;
    NextTry = Loop.NowMs() + RetryMs;
    RetryTimer->Start(RetryMs);
    // Not from inside the port's own signal.
    Loop.Post([this, alive = std::weak_ptr<int>(Alive)] {
      if (!alive.expired() && Gone && Port.isOpen()) Port.close();
    });
  }

  /// A cable put back is found by the next line that is sent, or by the timer of a port that only
  /// listens.
  bool Back() {
    if (!Gone) return true;
    if (Loop.NowMs() < NextTry) return false;
    NextTry = Loop.NowMs() + RetryMs;
    if (Port.isOpen()) Port.close();
    if (!OpenDevice()) return false;
    Gone = false;
    return true;
  }

  platform::PortLines ReadLines() {
    if (!Port.isOpen() || Gone) return {};
    const auto signals_ = Port.pinoutSignals();
    return {signals_.testFlag(QSerialPort::ClearToSendSignal),
            signals_.testFlag(QSerialPort::DataSetReadySignal),
            signals_.testFlag(QSerialPort::DataCarrierDetectSignal)};
  }

  std::size_t Queued() {
    if (!Opened || Gone || !Port.isOpen()) return 0;
    auto queued = static_cast<std::size_t>(std::max<qint64>(0, Port.bytesToWrite()));
#ifndef _WIN32
    int inDriver = 0;
    if (ioctl(Port.handle(), TIOCOUTQ, &inDriver) == 0 && inDriver > 0) {
      queued += static_cast<std::size_t>(inDriver);
    }
#endif
    return queued;
  }

  platform::LineLook LookNow() {
    const bool there = Opened && !Gone && Port.isOpen();
    return {.Lines = ReadLines(),
            .Breaks = there ? BreaksCounted(Port) : 0,
            .WaitsForCts = UsesWires() && Queued() > 0,
            .NowMs = Loop.NowMs()};
  }

  void LookAtLines() {
    for (const platform::LineEvent event : Watch.Look(LookNow())) {
      if (const auto handler = LineHandler) handler(event);
    }
  }

  void WatchLines() {
    Watch.Begin(LookNow());
    LinesTimer->Start(Opened && LineHandler ? LinesPeriodMs : 0);
  }

  /// A last line gets its moment to leave; a driver that is held up would keep the close waiting
  /// until the other end reads on.
  void CloseDevice() {
    if (!Port.isOpen()) return;
    Port.flush();
    for (int ms = 0; ms < CloseMs && Queued() > 0; ++ms) QThread::msleep(1);
    if (Queued() > 0) Port.clear(QSerialPort::Output);
    Port.close();
  }
};

QtSerialPort::QtSerialPort(platform::EventLoop& loop, DeviceMap devices)
    : device_(std::make_unique<Device>(loop, std::move(devices))) {}

QtSerialPort::~QtSerialPort() { Close(); }

bool QtSerialPort::Open(const platform::PortSetup& setup) {
  Close();
  const auto settings = ParseSettings(setup.Settings);
  if (!settings || DeviceOf(setup.Number, device_->Devices).empty()) return false;
  device_->Setup = setup;
  device_->Settings = *settings;
  device_->Gone = false;
  if (!device_->OpenDevice()) return false;
  device_->Opened = true;
  device_->WatchLines();
  return true;
}

void QtSerialPort::Close() {
  device_->CloseDevice();
  device_->Opened = false;
  device_->LinesTimer->Stop();
  device_->RetryTimer->Stop();
  device_->Input.clear();
  device_->Gone = false;
}

bool QtSerialPort::IsOpen() const { return device_->Opened; }
bool QtSerialPort::Lost() const { return device_->Gone; }

std::size_t QtSerialPort::BytesWaiting() const {
  device_->Take();
  return device_->Input.size();
}

std::string QtSerialPort::ReadAll() {
  device_->Take();
  return std::exchange(device_->Input, {});
}

void QtSerialPort::Write(std::string_view bytes) {
  if (!device_->Opened || !device_->Back()) return;
  device_->Port.write(bytes.data(), static_cast<qint64>(bytes.size()));
}

std::size_t QtSerialPort::BytesQueued() const { return device_->Queued(); }

void QtSerialPort::SetDtr(bool on) {
  device_->Setup.Dtr = on;
  if (device_->Opened && !device_->Gone) device_->Port.setDataTerminalReady(on);
}

void QtSerialPort::SetRts(bool on) {
  device_->Setup.Rts = on;
  const bool wires = device_->Port.flowControl() == QSerialPort::HardwareControl;
  if (device_->Opened && !device_->Gone && !wires) device_->Port.setRequestToSend(on);
}

platform::PortLines QtSerialPort::Lines() const { return device_->ReadLines(); }

void QtSerialPort::OnReceived(std::function<void()> handler) {
  device_->Received = std::move(handler);
}

void QtSerialPort::OnLineEvent(std::function<void(platform::LineEvent)> handler) {
  device_->LineHandler = std::move(handler);
  device_->WatchLines();
}

}  // namespace torvane::toolkit
