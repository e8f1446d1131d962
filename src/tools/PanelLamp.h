// A lamp of the simulated machine's panel: a dot that is lit or dark, and what it stands for.
#pragma once

#include <string>

#include "toolkit/Control.h"

namespace torvane::tools {

/// Lit and dark differ in more than colour: a dark lamp is a hollow ring with a plain caption, a
/// lit one a full dot with a bold caption.
class PanelLamp : public toolkit::Control {
 public:
  /// `lit` is the colour of the dot, 0x00BBGGRR.
  PanelLamp(QWidget* parent, std::string caption, toolkit::Colour lit);

  void SetLit(bool lit);
  [[nodiscard]] bool Lit() const { return isLit_; }

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  std::string caption_;
  toolkit::Colour lit_;
  bool isLit_ = false;
};

}  // namespace torvane::tools
