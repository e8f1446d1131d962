// The one window of the console, that holds all forms.
#pragma once

#include <QPointer>
#include <QWidget>
#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "platform/EventLoop.h"
#include "toolkit/Form.h"
#include "toolkit/Metrics.h"

namespace torvane::toolkit {

/// Owns the keyboard: a stroke goes to the active form's key-down hook, then its key-press hook,
/// then its focused control. Nothing depends on the window system's focus, stacking or mnemonics.
class Desk : public QWidget {
 public:
  explicit Desk(platform::EventLoop& loop);
  ~Desk() override;

  [[nodiscard]] platform::EventLoop& Loop() const { return loop_; }
  [[nodiscard]] const Metrics& Measures() const { return metrics_; }

  void SetBackground(Colour colour);

  /// Gives a strip at the bottom to a widget of its own, as high as `height` says for the whole
  /// desk; the forms have the room above it and are measured by that. Null gives the strip back.
  void SetDock(QWidget* strip, std::function<int(const Metrics&)> height);
  /// Lays out anew after the strip's height has changed.
  void Redock();
  /// What the forms have, pixels of the desk.
  [[nodiscard]] QRect Room() const;
  /// For a desk that is itself a strip: the measures of the screen that it belongs to.
  void MeasureAs(std::function<Metrics()> measures);

  /// Where lists that drop down may open, pixels of the desk; the whole desk unless set.
  void SetWorkArea(std::function<Area(const Metrics&)> area) { workArea_ = std::move(area); }
  [[nodiscard]] Area WorkArea() const;
  /// Full screen, or a window of that size (tests, pictures).
  void OpenFullScreen();
  void OpenWindow(int width, int height);

  /// Shows the form over all others, which take no input while it is open, and waits until it is
  /// hidden or closed. Another may come up over it; either may go first, and its caller goes on
  /// then. When the last has gone the form below has the keys again, without being activated anew.
  void ShowModal(Form& form);
  [[nodiscard]] bool IsModal(const Form& form) const;
  /// Nothing that is held on the form in front counts any longer; before the program ends.
  void HandsOff();
  /// The modal form on top, null if none is open.
  [[nodiscard]] Form* ModalForm() const;

  /// All forms made so far, the lowest first.
  [[nodiscard]] const std::vector<Form*>& Forms() const { return stack_; }
  /// The form that gets the keys; null when none shows.
  [[nodiscard]] Form* ActiveForm() const { return active_; }
  [[nodiscard]] Form* Find(const std::string& name) const;

  /// Paints what has changed before it returns.
  void Refresh();
  /// The hourglass. Calls pair up.
  void SetBusy(bool busy);
  [[nodiscard]] bool Busy() const { return busy_ > 0; }
  void Beep();
  /// Beeps so far.
  [[nodiscard]] int Beeps() const { return beeps_; }

  /// The window system asks to close the window: the desk stays, the handler decides.
  void OnCloseRequest(std::function<void()> handler) { closeRequest_ = std::move(handler); }

  /// A stroke as from the keyboard; Release lets the key go.
  void PressKey(const KeyStroke& stroke);
  void ReleaseKey(const KeyStroke& stroke);
  /// Press and release.
  void TypeKey(const KeyStroke& stroke);

  /// The desk as a picture, PNG by the name's ending. False when it cannot be written.
  bool SavePicture(const std::string& path);

  /// Used by the forms.
  void Add(Form& form);
  void Remove(Form& form);
  void Activate(Form& form);
  void RaiseInStack(Form& form);
  void Hidden(Form& form);
  /// Keys held on that form go up.
  void ReleaseKeysOf(const Form& form);

 protected:
  bool event(QEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void keyReleaseEvent(QKeyEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void closeEvent(QCloseEvent* event) override;

 private:
  [[nodiscard]] Form* TopForm() const;
  [[nodiscard]] Form* TargetOf(const KeyStroke& stroke) const;
  void SetActive(Form* form);
  void ApplyStack(const std::vector<Form*>& before);
  void EndModal();
  void ReleaseAllKeys();

  platform::EventLoop& loop_;
  Metrics metrics_;
  std::vector<Form*> stack_;
  std::vector<Form*> modal_;
  Form* active_ = nullptr;
  Form* belowModal_ = nullptr;        ///< had the keys before the first modal form came
  Form* shownDuringModal_ = nullptr;  ///< the last that was shown below it meanwhile
  std::map<Key, QPointer<Form>> held_;
  std::multiset<Key> handled_;  ///< strokes whose handlers are under way
  std::function<Area(const Metrics&)> workArea_;
  QPointer<QWidget> dock_;
  std::function<int(const Metrics&)> dockHeight_;
  std::function<Metrics()> measures_;
  std::function<void()> closeRequest_;
  Colour background_ = 0;
  int busy_ = 0;
  int beeps_ = 0;
};

}  // namespace torvane::toolkit
