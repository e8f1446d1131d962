#include "toolkit/LineWatch.h"

namespace torvane::toolkit {

void LineWatch::Begin(const LineLook& look) {
  last_ = look;
  heldSince_ = -1;
  told_ = false;
}

std::vector<platform::LineEvent> LineWatch::Look(const LineLook& look) {
  using platform::LineEvent;
  std::vector<LineEvent> events;
  if (look.Lines.Cts != last_.Lines.Cts) events.push_back(LineEvent::CtsChanged);
  if (look.Lines.Dsr != last_.Lines.Dsr) events.push_back(LineEvent::DsrChanged);
  if (look.Lines.Carrier != last_.Lines.Carrier) events.push_back(LineEvent::CarrierChanged);
  if (look.Breaks != last_.Breaks) events.push_back(LineEvent::Break);
  last_ = look;
  if (!look.BytesWait || look.Lines.Cts) {
    heldSince_ = -1;
    told_ = false;
  } else if (heldSince_ < 0) {
    heldSince_ = look.NowMs;
  } else if (!told_ && look.NowMs - heldSince_ >= CtsTimeoutMs) {
    told_ = true;
    events.push_back(LineEvent::CtsTimeout);
  }
  return events;
}

}  // namespace torvane::toolkit
