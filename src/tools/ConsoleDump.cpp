#include "tools/ConsoleDump.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <algorithm>
#include <array>

#include "core/ScreenNames.h"
#include "toolkit/Button.h"
#include "toolkit/EntryBox.h"
#include "toolkit/Frame.h"
#include "toolkit/ImageMark.h"
#include "toolkit/Label.h"
#include "toolkit/ListBox.h"
#include "toolkit/Panel.h"
#include "toolkit/PickBox.h"
#include "toolkit/PlotCanvas.h"
#include "toolkit/ProgressBar.h"
#include "toolkit/Slider.h"

namespace torvane::tools {

using toolkit::Control;

namespace {

QString Text(const std::string& latin1) { return QString::fromLatin1(latin1.c_str()); }

/// 0x00BBGGRR as "#RRGGBB".
QString ColourText(platform::Colour colour) {
  const auto byte = [&](unsigned shift) {
    return QString::number((colour >> shift) & 0xFFU, 16).rightJustified(2, '0').toUpper();
  };
  return "#" + byte(0) + byte(8) + byte(16);
}

QJsonArray Items(const toolkit::ListBox& list) {
  QJsonArray items;
  for (int i = 0; i < list.Count(); ++i) {
    QJsonObject item{{"text", Text(list.Text(i))}, {"marked", list.Selected(i)}};
    const auto& details = list.Details();
    const auto line = static_cast<std::size_t>(i);
    if (line < details.size() && !details[line].empty()) item["detail"] = Text(details[line]);
    items.append(item);
  }
  return items;
}

void AddButton(const Control& control, QJsonObject& object) {
  object["text"] = Text(static_cast<const toolkit::Button&>(control).Caption());
}

void AddTwoState(const Control& control, QJsonObject& object) {
  AddButton(control, object);
  object["down"] = static_cast<const toolkit::TwoStateButton&>(control).Down();
}

void AddLabel(const Control& control, QJsonObject& object) {
  object["text"] = Text(static_cast<const toolkit::Label&>(control).Text());
}

void AddEntry(const Control& control, QJsonObject& object) {
  const auto& entry = static_cast<const toolkit::EntryBox&>(control);
  object["text"] = Text(entry.Text());
  object["cursor"] = entry.Cursor();
  object["selection"] = entry.SelectionLength();
}

void AddListLines(const toolkit::ListBox& list, QJsonObject& object) {
  object["items"] = Items(list);
  object["top"] = list.TopLine();
  object["row"] = list.Current() + 1;
}

void AddList(const Control& control, QJsonObject& object) {
  AddListLines(static_cast<const toolkit::ListBox&>(control), object);
}

void AddPick(const Control& control, QJsonObject& object) {
  const auto& pick = static_cast<const toolkit::PickBox&>(control);
  AddListLines(pick.List(), object);
  object["text"] = Text(pick.Text());
  object["open"] = pick.ListOpen();
  object["row"] = pick.Current() + 1;
}

void AddProgress(const Control& control, QJsonObject& object) {
  const auto& bar = static_cast<const toolkit::ProgressBar&>(control);
  object["minimum"] = bar.Minimum();
  object["maximum"] = bar.Maximum();
  object["value"] = bar.Value();
}

void AddSlider(const Control& control, QJsonObject& object) {
  const auto& slider = static_cast<const toolkit::Slider&>(control);
  object["maximum"] = slider.Maximum();
  object["value"] = slider.Value();
}

void AddPanel(const Control& control, QJsonObject& object) {
  object["text"] = Text(static_cast<const toolkit::Panel&>(control).Caption());
}

void AddFrame(const Control& control, QJsonObject& object) {
  object["text"] = Text(static_cast<const toolkit::Frame&>(control).Caption());
}

void AddNothing(const Control&, QJsonObject&) {}

template <class Kind>
bool Is(const Control& control) {
  return dynamic_cast<const Kind*>(&control) != nullptr;
}

bool Anything(const Control&) { return true; }

struct KindRow {
  const char* Name;
  bool (*Is)(const Control&);
  void (*Add)(const Control&, QJsonObject&);
};

/// A kind that is made from another comes before it.
constexpr std::array<KindRow, 12> Kinds = {{
    {"two-state", Is<toolkit::TwoStateButton>, AddTwoState},
    {"button", Is<toolkit::Button>, AddButton},
    {"label", Is<toolkit::Label>, AddLabel},
    {"entry", Is<toolkit::EntryBox>, AddEntry},
    {"list", Is<toolkit::ListBox>, AddList},
    {"pick", Is<toolkit::PickBox>, AddPick},
    {"progress", Is<toolkit::ProgressBar>, AddProgress},
    {"slider", Is<toolkit::Slider>, AddSlider},
    {"panel", Is<toolkit::Panel>, AddPanel},
    {"frame", Is<toolkit::Frame>, AddFrame},
    {"canvas", Is<toolkit::PlotCanvas>, AddNothing},
    {"image", Anything, AddNothing},  // what only shows: marks, lamps
}};

const KindRow& RowOf(const Control& control) {
  return *std::find_if(Kinds.begin(), Kinds.end(),
                       [&](const KindRow& row) { return row.Is(control); });
}

void AddPlace(const QWidget& widget, QJsonObject& object) {
  const QPoint corner = widget.mapTo(widget.window(), QPoint());
  object["x"] = corner.x();
  object["y"] = corner.y();
  object["width"] = widget.width();
  object["height"] = widget.height();
}

QJsonObject ControlObject(const Control& control) {
  const KindRow& kind = RowOf(control);
  QJsonObject object{{"name", Text(control.Name())},
                     {"kind", kind.Name},
                     {"text", ""},
                     {"enabled", control.Enabled()},
                     {"visible", control.OnShow()},
                     {"down", false},
                     {"focused", control.HasFocus()},
                     {"back", ColourText(control.Background())},
                     {"fore", ColourText(control.Foreground())}};
  kind.Add(control, object);
  AddPlace(control, object);
  return object;
}

/// The caption of its title strip; empty for a form without one.
QString TitleOf(const toolkit::Form& form) {
  for (const Control* control : form.Controls()) {
    const auto* panel = dynamic_cast<const toolkit::Panel*>(control);
    if (panel && panel->Style() == toolkit::PanelStyle::Title) return Text(panel->Caption());
  }
  return {};
}

QJsonObject FormObject(const toolkit::Form& form) {
  const auto& desk = form.OwnerDesk();
  QJsonArray controls;
  for (const Control* control : form.Controls()) {
    // Parts of other controls, such as the bar of a list, have no name.
    if (!control->Name().empty()) controls.append(ControlObject(*control));
  }
  QJsonObject object{{"name", Text(form.Name())}, {"title", TitleOf(form)},
                     {"active", form.Active()},   {"modal", desk.IsModal(form)},
                     {"locked", !form.Enabled()}, {"controls", controls}};
  AddPlace(form, object);
  return object;
}

QJsonArray Forms(const ScriptStage& stage) {
  QJsonArray forms;
  for (const toolkit::Desk* desk : stage.Desks()) {
    const auto& stack = desk->Forms();
    for (auto form = stack.rbegin(); form != stack.rend(); ++form) {
      if ((*form)->Visible()) forms.append(FormObject(**form));
    }
  }
  return forms;
}

QJsonObject State(const core::System& system) {
  QJsonArray programs;
  for (const auto& program : system.Programs) {
    programs.append(QJsonObject{{"directory", Text(program.DirectoryName)},
                                {"program", Text(program.ProgramName)},
                                {"tableLines", program.TableLines}});
  }
  return {{"formsLocked", system.Console.FormsLocked},
          {"currentForm", Text(system.Console.CurrentForm)},
          {"activeSlot", system.ActiveSlot.Number()},
          {"tableSent", system.TableSent},
          {"plotKeysActive", system.Console.PlotKeysActive},
          {"plotKeyMode", system.Console.PlotKeyMode},
          {"slots", programs}};
}

toolkit::PlotCanvas* ShownPlot(const ScriptStage& stage) {
  const toolkit::Form* const main = ShownForm(stage.Desks(), core::ScreenNames::FrontEnd);
  if (main == nullptr) return nullptr;
  for (Control* control : main->Controls()) {
    auto* plot = dynamic_cast<toolkit::PlotCanvas*>(control);
    if (plot && plot->OnShow()) return plot;
  }
  return nullptr;
}

/// The middle of the cross; null while it does not show.
QJsonValue Cursor(const toolkit::RasterCanvas& canvas) {
  const auto cross = canvas.GetOverlay(platform::Overlay::CrossLine1);
  if (!cross.Visible) return QJsonValue::Null;
  return QJsonArray{(cross.From.X + cross.To.X) / 2, (cross.From.Y + cross.To.Y) / 2};
}

QJsonValue Marked(const ScriptStage& stage) {
  const int record = stage.MarkedRecord ? stage.MarkedRecord() : 0;
  return record > 0 ? QJsonValue(record) : QJsonValue(QJsonValue::Null);
}

QJsonValue Plot(const ScriptStage& stage) {
  toolkit::PlotCanvas* const plot = ShownPlot(stage);
  if (plot == nullptr) return QJsonValue::Null;
  const auto& canvas = plot->Canvas();
  const auto from = canvas.ToUser(0, 0);
  const auto to = canvas.ToUser(canvas.PixelWidth(), canvas.PixelHeight());
  const auto slot = stage.System.ActiveSlot;
  return QJsonObject{{"slot", slot.Number()},
                     {"view", QJsonArray{from.X, from.Y, to.X, to.Y}},
                     {"zoomed", stage.System.Views[slot].ViewZoomed},
                     {"cursor", Cursor(canvas)},
                     {"marked", Marked(stage)}};
}

}  // namespace

const char* KindOf(const Control& control) { return RowOf(control).Name; }

std::string ConsoleDump(const ScriptStage& stage) {
  const QJsonObject dump{
      {"forms", Forms(stage)}, {"state", State(stage.System)}, {"plot", Plot(stage)}};
  return QJsonDocument(dump).toJson(QJsonDocument::Indented).toStdString();
}

}  // namespace torvane::tools
