#include "toolkit/QtSessionEnd.h"

#include <QProcess>

#ifdef _WIN32
#include <windows.h>
#endif

namespace torvane::toolkit {

namespace {

#ifdef _WIN32
/// The right to shut down is held but off until it is asked for.
void TakeShutdownPrivilege() {
  HANDLE token = nullptr;
  if (!OpenProcessToken(GetCurrentProcess(), TOKEN_ADJUST_PRIVILEGES | TOKEN_QUERY, &token)) return;
  TOKEN_PRIVILEGES privileges{};
  privileges.PrivilegeCount = 1;
  privileges.Privileges[0].Attributes = SE_PRIVILEGE_ENABLED;
  if (LookupPrivilegeValueA(nullptr, "SeShutdownPrivilege", &privileges.Privileges[0].Luid)) {
    AdjustTokenPrivileges(token, FALSE, &privileges, 0, nullptr, nullptr);
  }
  CloseHandle(token);
}

void ShutDownMachine() {
  TakeShutdownPrivilege();
  // Forced: no program of the session may hold the machine's end up.
  ExitWindowsEx(EWX_SHUTDOWN | EWX_FORCE, static_cast<DWORD>(-1));
}
#else
void ShutDownMachine() {
  QStringList words = PowerOffCommand();
  const QString program = words.takeFirst();
  QProcess::startDetached(program, words);
}
#endif

}  // namespace

QStringList PowerOffCommand() {
  return {QStringLiteral("systemctl"), QStringLiteral("poweroff"),
          QStringLiteral("--ignore-inhibitors")};
}

QtSessionEnd::QtSessionEnd(QtLoop& loop, bool ownsMachine,
                           std::function<std::string(std::string_view)> nativePath)
    : loop_(loop), ownsMachine_(ownsMachine), nativePath_(std::move(nativePath)) {}

void QtSessionEnd::EndSession() {
  if (ownsMachine_) ShutDownMachine();
}

void QtSessionEnd::StartProgram(std::string_view path) {
  const std::string native = nativePath_ ? nativePath_(path) : std::string(path);
  QProcess::startDetached(QString::fromLocal8Bit(native.c_str()), {});
}

void QtSessionEnd::EndProcess() { loop_.End(0); }

}  // namespace torvane::toolkit
