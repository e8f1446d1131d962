// Text and figures.
#pragma once

#include "toolkit/Control.h"

namespace torvane::toolkit {

enum class Alignment { Left, Centre, Right };

/// A text of one or more lines (line feeds divide), centred in height. An ampersand marks an
/// accelerator unless SetPlainText says otherwise. Readout and Figure set their figures in cells of
/// one width. It takes the focus only when set to (SetFocusable).
class Label : public Control {
 public:
  Label(QWidget* parent, std::string text = {}, TypeStyle style = TypeStyle::Body,
        Alignment alignment = Alignment::Left);

  void SetText(std::string text);
  [[nodiscard]] const std::string& Text() const { return text_; }
  void SetStyle(TypeStyle style);
  void SetAlignment(Alignment alignment);
  /// At the top of its place instead of its middle.
  void SetAtTop(bool atTop);
  /// Paints its background (the default is to let its parent show).
  void SetFilled(bool filled);
  /// With a thin rim; only a filled label has one.
  void SetRim(bool rim);
  /// A line that is too wide is set smaller before it is cut.
  void SetShrinking(bool shrinking);
  /// Shows ampersands as they are (messages, program text).
  void SetPlainText(bool plain);

  /// The height of its lines of text with their leading, pixels; one with a rim is as high as an
  /// entry.
  [[nodiscard]] int NaturalHeight() const;

  /// A press and release on it.
  void OnClick(std::function<void()> handler) { click_ = std::move(handler); }
  /// As if it were pressed; nothing when it is hidden or disabled.
  void Press();

 protected:
  void paintEvent(QPaintEvent* event) override;
  void PointerUp(const PointerEvent& event) override;

 private:
  std::string text_;
  TypeStyle style_;
  Alignment alignment_;
  bool atTop_ = false;
  bool filled_ = false;
  bool rim_ = false;
  bool plain_ = false;
  bool shrinking_ = false;
  std::function<void()> click_;
};

}  // namespace torvane::toolkit
