// A restart that is chosen on the plot: the operator walks the records on view, splits the element
// that was being cut, and moves the split point along it.
#pragma once

#include <cstdint>
#include <optional>

#include "restart/BlockRestart.h"
#include "restart/SplitPoint.h"
#include "restart/VisualWalk.h"

namespace torvane::restart {

/// Values of PlotKeyMode during a visual restart. The value 6, a walk through "SplitCyc.drw", is
/// never entered.
namespace VisualMode {
inline constexpr std::int16_t Choice = 5;
inline constexpr std::int16_t SplitLine = 7;
inline constexpr std::int16_t SplitArc = 8;
}  // namespace VisualMode

/// The plot and its keys, as the visual restart sees them.
class VisualScreens {
 public:
  virtual ~VisualScreens() = default;

  /// Paints a record of the slot in force, in its normal colour or highlighted.
  virtual void PaintRecord(const partprogram::DrawRecord& record, bool highlighted) = 0;
  /// PathButton 5, "SPLI&T".
  virtual void EnableSplit(bool enabled) = 0;
  /// Back to the normal row of keys. Calls GiveBackRecord first.
  virtual void LeaveGraphics() = 0;
  virtual void OpenRestartForm() = 0;
};

/// PathButton 1 to 6.
enum class PathKey : std::uint8_t { First = 1, Previous, Next, Last, Split, Select };

/// Modes 5, 7 and 8 of PlotKeyMode:
///
///   from    key or event                  to
///   -       BeginVisualRestart            5, where a record is on view; otherwise left, a warning
///   5       FIRST PREVIOUS NEXT LAST      5, another record
///   5       a pick                        5, another record
///   5       SPLIT on a line / an arc      7 / 8, the whole element remains
///   5       SELECT                        5: only a split element can be selected
///   7, 8    FIRST PREVIOUS NEXT LAST      7, 8, another split point
///   7, 8    SPLIT, a pick                 7, 8
///   7, 8    SELECT, machine free          left, RestartForm
///   7, 8    SELECT, machine busy          left, after a warning
///   5, 7, 8 C or ShutdownButton           left: Cancel
class VisualRestart {
 public:
  VisualRestart(const ChoiceParts& parts, VisualScreens& screens)
      : parts_(parts), screens_(screens) {}

  /// Highlights the first record on view. PlotKeyMode is 5 already.
  void BeginVisualRestart();

  /// A PathButton in modes 5 to 8.
  void VisualKey(PathKey key);

  /// A click on the plot in mode 5; mm.
  void Pick(float x, float y);

  /// C or ShutdownButton.
  void Cancel();

  /// Paints a record that is highlighted in its normal colour; nothing where none is.
  void GiveBackRecord();

  /// Where the head stood when the last run of this very program did not come to its end, mm; by
  /// the journal. It is marked on the plot, never chosen.
  [[nodiscard]] std::optional<core::Vector2> LastPlace() const;

  [[nodiscard]] const VisualState& State() const { return state_; }
  [[nodiscard]] const std::optional<SplitPoint>& Split() const { return point_; }

 private:
  void Choose(std::int16_t number);
  void WalkKeyPressed(PathKey key);
  void StartSplit();
  void SplitKeyPressed(PathKey key);
  void ShowSplit();
  void RestartHere();
  void GatherAfterRecord();
  void Leave();
  [[nodiscard]] std::int16_t& Mode() { return parts_.System.Console.PlotKeyMode; }
  [[nodiscard]] const core::PlotView& View() const;

  ChoiceParts parts_;
  VisualScreens& screens_;
  VisualState state_;
  std::optional<SplitPoint> point_;
  bool highlighted_ = false;
};

}  // namespace torvane::restart
