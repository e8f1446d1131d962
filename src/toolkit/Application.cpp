#include "toolkit/Application.h"

#include <QDir>
#include <QEvent>
#include <QFile>
#include <QFontDatabase>
#include <array>
#include <utility>

namespace torvane::toolkit {

namespace {

/// Where distributions put the font.
constexpr std::array FontDirectories = {"/usr/share/fonts/opentype/b612",
                                        "/usr/share/fonts/truetype/b612",
                                        "/usr/local/share/fonts/b612"};

/// Number of bytes, high byte first; 0 after the end.
quint32 Number(const QByteArray& file, quint32 at, int bytes) {
  quint32 value = 0;
  for (int i = 0; i < bytes; ++i) {
    const auto place = static_cast<qsizetype>(at) + i;
    value = value << 8 | (place < file.size() ? static_cast<quint8>(file.at(place)) : 0);
  }
  return value;
}

/// The fixed-pitch cut of the font calls itself by the same family and would stand in for the
/// regular one. Under a name of its own, in memory, the right cut cannot be missed: the letter B of
/// the family's name becomes a T wherever it stands in the font's table of names.
QByteArray Renamed(QByteArray file) {
  const quint32 tables = Number(file, 4, 2);
  for (quint32 i = 0; i < tables; ++i) {
    const quint32 entry = 12 + 16 * i;
    if (file.mid(entry, 4) != "name") continue;
    const auto from = static_cast<qsizetype>(Number(file, entry + 8, 4));
    const auto length = static_cast<qsizetype>(Number(file, entry + 12, 4));
    QByteArray names = file.mid(from, length);
    names.replace("B612", "T612");
    names.replace(QByteArray("B\0006\0001\0002", 7), QByteArray("T\0006\0001\0002", 7));
    file.replace(from, names.size(), names);
  }
  return file;
}

/// The family that the cuts of the screen were loaded under; empty when the font is not installed.
QString LoadFont() {
  QString family;
  for (const char* name : FontDirectories) {
    const QDir directory(QString::fromLatin1(name));
    const QStringList cuts = {"B612-Regular.otf", "B612-Bold.otf", "B612-Regular.ttf",
                              "B612-Bold.ttf"};
    for (const QString& cut : directory.entryList(cuts, QDir::Files)) {
      QFile file(directory.filePath(cut));
      if (!file.open(QIODevice::ReadOnly)) continue;
      const int id = QFontDatabase::addApplicationFontFromData(Renamed(file.readAll()));
      if (id >= 0) family = QFontDatabase::applicationFontFamilies(id).value(0);
    }
  }
  return family;
}

}  // namespace

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
  const QString family = LoadFont();
  if (family.isEmpty()) return;
  QFont font(family);
  font.setPixelSize(16);
  setFont(font);
}

namespace {

int eventDepth = 0;  // of the one thread that has the screens

struct InEvent {
  InEvent() { ++eventDepth; }
  ~InEvent() { --eventDepth; }
  InEvent(const InEvent&) = delete;
  InEvent& operator=(const InEvent&) = delete;
};

}  // namespace

int Application::EventDepth() { return eventDepth; }

bool Application::notify(QObject* receiver, QEvent* event) {
  const InEvent inEvent;
  try {
    return QApplication::notify(receiver, event);
  } catch (...) {
    if (!fault_) fault_ = std::current_exception();
    return true;
  }
}

std::exception_ptr Application::TakeFault() { return std::exchange(fault_, nullptr); }

}  // namespace torvane::toolkit
