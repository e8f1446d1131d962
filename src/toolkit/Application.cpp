#include "toolkit/Application.h"

#include <QDir>
#include <QEvent>
#include <QFontDatabase>
#include <array>

namespace torvane::toolkit {

namespace {

/// Where distributions put the font, for systems whose font service does not list it.
constexpr std::array FontDirectories = {"/usr/share/fonts/opentype/b612",
                                        "/usr/share/fonts/truetype/b612",
                                        "/usr/local/share/fonts/b612"};

void LoadFont(const QString& family) {
  if (QFontDatabase::families().contains(family)) return;
  for (const char* name : FontDirectories) {
    const QDir directory(QString::fromLatin1(name));
    for (const QString& file : directory.entryList({"B612-*.otf", "B612-*.ttf"}, QDir::Files)) {
      QFontDatabase::addApplicationFont(directory.filePath(file));
    }
  }
}

}  // namespace

Application::Application(int& argc, char** argv) : QApplication(argc, argv) {
  const QString family = QStringLiteral("B612");
  LoadFont(family);
  if (!QFontDatabase::families().contains(family)) return;
  QFont font(family);
  font.setPixelSize(16);
  setFont(font);
}

bool Application::notify(QObject* receiver, QEvent* event) {
  try {
    return QApplication::notify(receiver, event);
  } catch (...) {
    if (!fault_) fault_ = std::current_exception();
    return true;
  }
}

std::exception_ptr Application::TakeFault() { return std::exchange(fault_, nullptr); }

}  // namespace torvane::toolkit
