// torvane: the console of the machine.
#include <QGuiApplication>
#include <QMessageBox>
#include <cstdio>

#include "platform/RuntimeFault.h"
#include "toolkit/Application.h"
#include "tools/ConsoleProgram.h"
#include "tools/TorvaneOptions.h"
#include "tools/UnattendedRun.h"

namespace {

/// One plain sentence, and a box where somebody can see it.
void TellFault(const char* sentence) {
  std::fprintf(stderr, "torvane: %s\n", sentence);
  if (QGuiApplication::platformName() != "offscreen") {
    QMessageBox::critical(nullptr, "Torvane 32", QString::fromLatin1(sentence));
  }
}

}  // namespace

int main(int argc, char** argv) {
  int status = 0;
  const auto options = torvane::tools::ReadTorvaneOptions(argc, argv, status);
  if (!options) return status;
  torvane::toolkit::Application application(argc, argv);
  try {
    torvane::tools::ConsoleProgram program(*options);
    torvane::tools::UnattendedRun run(program, *options);
    return program.Run();
  } catch (const torvane::platform::RuntimeFault& fault) {
    TellFault(fault.what());
  } catch (const std::exception& fault) {
    TellFault(fault.what());
  }
  return 1;
}
