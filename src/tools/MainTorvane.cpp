// torvane: the console of the machine.
#include <QGuiApplication>
#include <QMessageBox>
#include <cstdio>
#include <optional>

#include "platform/ClosedStreams.h"
#include "platform/NativePaths.h"
#include "platform/RuntimeFault.h"
#include "toolkit/Application.h"
#include "toolkit/SystemBox.h"
#include "tools/ConsoleProgram.h"
#include "tools/KeyScriptRun.h"
#include "tools/TorvaneOptions.h"
#include "tools/UnattendedRun.h"

namespace {

/// One plain sentence, and a box where somebody can see it.
void TellFault(const char* sentence) {
  std::fprintf(stderr, "torvane: %s\n", torvane::platform::ToNativeName(sentence).c_str());
  if (QGuiApplication::platformName() != "offscreen") {
    QMessageBox box(QMessageBox::Critical, "Torvane 32", QString::fromLatin1(sentence));
    torvane::toolkit::PrepareForFingers(box);
    box.exec();
  }
}

}  // namespace

int main(int argc, char** argv) {
  torvane::platform::FillClosedStreams();
  int status = 0;
  const auto options = torvane::tools::ReadTorvaneOptions(argc, argv, status);
  if (!options) return status;
  torvane::toolkit::Application application(argc, argv);
  try {
    torvane::tools::ConsoleProgram program(*options);
    torvane::tools::UnattendedRun run(program, *options);
    std::optional<torvane::tools::KeyScriptRun> keys;
    if (!options->Keys.empty()) keys.emplace(program.Stage(), options->Keys);
    const int ended = program.Run();
    return ended == 0 && keys && !keys->Finished() ? torvane::tools::ScriptFailed : ended;
  } catch (const torvane::platform::RuntimeFault& fault) {
    TellFault(fault.what());
  } catch (const std::exception& fault) {
    TellFault(fault.what());
  }
  return 1;
}
