// Plain faces that hold other controls: title strips, bodies, text lines.
#pragma once

#include <optional>
#include <string>

#include "toolkit/Control.h"

namespace torvane::toolkit {

enum class PanelStyle {
  Title,  ///< the strip on top of a form, caption in the middle; its mouse events drag the form
  Body,   ///< a plain face
  Text,   ///< a framed line of text, caption at the left
  Sunken  ///< a framed field, for figures and lists
};

class Panel : public Control {
 public:
  Panel(QWidget* parent, PanelStyle style, std::string caption = {});

  [[nodiscard]] PanelStyle Style() const { return style_; }
  void SetCaption(std::string caption);
  [[nodiscard]] const std::string& Caption() const { return caption_; }
  /// The line round a Text or Sunken panel; by itself it follows from the face.
  void SetRim(Colour rim);
  /// The room for controls, in the panel's own pixels.
  [[nodiscard]] Area Inside() const;

 protected:
  void paintEvent(QPaintEvent* event) override;

 private:
  PanelStyle style_;
  std::string caption_;
  std::optional<Colour> rim_;
};

}  // namespace torvane::toolkit
