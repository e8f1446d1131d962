#include "tools/SimPanelLoop.h"

#include <QSocketNotifier>

#include "toolkit/QtLoop.h"
#include "tools/SimulatorPanel.h"

namespace torvane::tools {

namespace {

/// How often the host looks at what became due by itself: late answers, events, signals.
constexpr int BeatMs = 10;

}  // namespace

int RunWithPanel(SimHost& host) {
  toolkit::QtLoop loop;
  SimulatorPanel panel(loop, host.Controller(), core::ColourTable());
  const auto step = [&] {
    if (!host.Step(0)) loop.End(ExitStatus::Good);
  };
  const auto beat = loop.MakeTimer(step);
  QSocketNotifier line(host.LineHandle(), QSocketNotifier::Read);
  QObject::connect(&line, &QSocketNotifier::activated, step);
  panel.OpenAlone([&] {
    host.Finish();
    loop.End(ExitStatus::Good);
  });
  beat->Start(BeatMs);
  return loop.Run();
}

}  // namespace torvane::tools
