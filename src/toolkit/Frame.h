// A thin line round a group of controls, with the caption set into it.
#pragma once

#include "toolkit/Control.h"

namespace torvane::toolkit {

class Frame : public Control {
 public:
  Frame(QWidget* parent, std::string caption = {});

  void SetCaption(std::string caption);
  [[nodiscard]] const std::string& Caption() const { return caption_; }
  /// The room for controls inside the line, in the frame's own pixels.
  [[nodiscard]] Area Inside() const;
  /// Height of a frame around controls of that height.
  [[nodiscard]] int HeightFor(const Metrics& metrics, int inside) const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  [[nodiscard]] int Rise(const Metrics& metrics) const;

  std::string caption_;
};

}  // namespace torvane::toolkit
