// The hands of a script: strokes of keys, and the pointer on the controls of the console.
#pragma once

#include <QEvent>
#include <QPoint>
#include <QPointer>
#include <map>
#include <set>
#include <string>
#include <utility>

#include "toolkit/ListBox.h"
#include "tools/ScriptStage.h"

namespace torvane::tools {

/// Every stroke and every press is a job of its own on the loop, as those of a person are events of
/// their own: nothing here returns only when a screen that it opened has gone. What the pointer
/// does goes to whatever shows under it. A call gives what was in its way, nothing when it was
/// done.
class ScriptHands {
 public:
  explicit ScriptHands(const ScriptStage& stage) : stage_(stage) {}

  /// Press and release.
  void Type(const toolkit::KeyStroke& stroke);
  /// Of a key that is held already: the repeat of it.
  void Press(const toolkit::KeyStroke& stroke);
  void Release(const toolkit::KeyStroke& stroke);

  [[nodiscard]] std::string Click(const std::string& form, const std::string& control);
  [[nodiscard]] std::string DoubleClick(const std::string& form, const std::string& control);
  /// Presses and keeps, until LetGo of the same control.
  [[nodiscard]] std::string Hold(const std::string& form, const std::string& control);
  [[nodiscard]] std::string LetGo(const std::string& form, const std::string& control);
  /// Row from 1 of a list, or of the open list of a pick box; scrolls it into view.
  [[nodiscard]] std::string ClickRow(const std::string& form, const std::string& control, int row);
  /// In user units of a canvas.
  [[nodiscard]] std::string Point(const std::string& form, const std::string& control, double x,
                                  double y);

 private:
  /// Where the pointer is: what shows there, and the place in its pixels.
  struct Aim {
    QPointer<QWidget> Target;
    QPoint Place;
  };

  [[nodiscard]] std::string Find(const std::string& form, const std::string& control,
                                 toolkit::Control*& found) const;
  /// Aims at a place of the control, in its pixels.
  [[nodiscard]] static std::string AimAt(toolkit::Control& control, const QPoint& place, Aim& aim);
  [[nodiscard]] std::string AimAtMiddle(const std::string& form, const std::string& control,
                                        Aim& aim) const;
  [[nodiscard]] std::string ClickAt(toolkit::Control& control, const QPoint& place);
  void ClickAim(const Aim& aim);
  void Send(const Aim& aim, QEvent::Type type);

  ScriptStage stage_;
  std::set<toolkit::Key> heldKeys_;
  std::map<std::pair<std::string, std::string>, Aim> held_;
};

}  // namespace torvane::tools
