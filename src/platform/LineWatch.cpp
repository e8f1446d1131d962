#include "platform/LineWatch.h"

namespace torvane::platform {

bool HeldWatch::Held(bool held, std::int64_t nowMs) {
  if (!held) {
    since_ = -1;
    told_ = false;
    return false;
  }
  if (since_ < 0) since_ = nowMs;
  if (told_ || nowMs - since_ < LineTimeoutMs) return false;
  told_ = true;
  return true;
}

void LineWatch::Begin(const LineLook& look) {
  last_ = look;
  cts_ = dsr_ = {};
}

std::vector<LineEvent> LineWatch::Look(const LineLook& look) {
  std::vector<LineEvent> events;
  if (look.Lines.Cts != last_.Lines.Cts) events.push_back(LineEvent::CtsChanged);
  if (look.Lines.Dsr != last_.Lines.Dsr) events.push_back(LineEvent::DsrChanged);
  if (look.Lines.Carrier != last_.Lines.Carrier) events.push_back(LineEvent::CarrierChanged);
  if (look.Breaks != last_.Breaks) events.push_back(LineEvent::Break);
  last_ = look;
  if (cts_.Held(look.WaitsForCts && !look.Lines.Cts, look.NowMs)) {
    events.push_back(LineEvent::CtsTimeout);
  }
  if (dsr_.Held(look.WaitsForDsr && !look.Lines.Dsr, look.NowMs)) {
    events.push_back(LineEvent::DsrTimeout);
  }
  return events;
}

}  // namespace torvane::platform
