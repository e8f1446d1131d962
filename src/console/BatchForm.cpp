#include "console/BatchForm.h"

#include <string>

#include "console/ConsoleServices.h"
#include "console/EntryMode.h"
#include "core/General.h"
#include "core/SlotFiles.h"
#include "supervision/BatchCount.h"
#include "supervision/PollTrio.h"

namespace torvane::console {

namespace {

constexpr const char* SetCaptionText = "&SET";
constexpr const char* OkCaptionText = "&OK";

/// Boxes in the order of the record.
constexpr int PartsPerSheetBox = 1;
constexpr int PartsRequiredBox = 2;
constexpr int SheetsRequiredBox = 3;
constexpr int SheetsCompletedBox = 4;
constexpr int SheetsToGoBox = 5;

/// The boxes that take a number, by the digit of their key.
constexpr std::array<int, 3> EditableBoxes = {PartsPerSheetBox, PartsRequiredBox,
                                              SheetsCompletedBox};

bool IsEditable(int index) {
  for (const int box : EditableBoxes) {
    if (box == index) return true;
  }
  return false;
}

}  // namespace

BatchForm::BatchForm(const ScreenStart& start) : Screen(start) {
  constexpr double LabelWide = 336;
  const auto labels = AddLabels(Body(), "BatchLabel", 1,
                                {"PARTS PER SHEET : &1", "PARTS REQUIRED : &2",
                                 "SHEETS REQUIRED :", "COMPLETED SHEETS : &3", "SHEETS TO GO :"});
  std::vector<std::vector<Cell>> lines;
  for (int index = 1; index <= 5; ++index) {
    auto& box = AddBox(Body(), Numbered("BatchBox", index), [this, index] { BoxPressed(index); });
    box.SetAlignRight(true);
    boxes_[static_cast<std::size_t>(index - 1)] = &box;
    lines.push_back({labels[static_cast<std::size_t>(index - 1)], box});
  }
  MakeKeys();
  OfferStage(supervision::PollStage::Batch, [this] {
    if (!Editing()) ShowRecord(System().Active().BatchCounters);
  });
  SetGrid(640, Rows({Table({LabelWide, 0}, lines),
                     Columns({setButton_, clearButton_, exitButton_}).Spaced(SectionGap)})
                   .Spaced(SectionGap));
}

void BatchForm::MakeKeys() {
  setButton_ =
      &AddButton(Body(), "SetButton", SetCaptionText, Role::General, [this] { SetPressed(); });
  clearButton_ =
      &AddButton(Body(), "ClearButton", "&CLEAR", Role::General, [this] { ClearPressed(); });
  exitButton_ = &AddExitButton(Body());
  for (std::size_t i = 0; i < EditableBoxes.size(); ++i) {
    AddKey(static_cast<toolkit::Key>('1' + static_cast<int>(i)),
           [this, i] { Box(EditableBoxes[i]).Press(); });
  }
}

/// The mode is the caption and nothing else.
bool BatchForm::Editing() const { return setButton_->Caption() == OkCaptionText; }

void BatchForm::ShowEditing(bool editing) {
  SetCaption(*setButton_, editing ? OkCaptionText : SetCaptionText);
  SetCaption(*clearButton_, editing ? "&CANCEL" : "&CLEAR");
  exitButton_->SetEnabled(!editing);
  SetGlobalKeys(editing ? GlobalKeys::None : GlobalKeys::NoSlots);
  SetHome(editing ? *setButton_ : *exitButton_);
  System().Console.BatchEditing = editing;
}

void BatchForm::ShowRecord(const core::Batch& batch) {
  Box(PartsPerSheetBox).SetText(core::LongText(batch.PartsPerSheet));
  Box(PartsRequiredBox).SetText(core::LongText(batch.PartsRequired));
  Box(SheetsRequiredBox).SetText(core::LongText(batch.SheetsRequired));
  Box(SheetsCompletedBox).SetText(core::LongText(batch.SheetsCompleted));
  Box(SheetsToGoBox).SetText(core::LongText(batch.SheetsToGo));
  // Nothing left to cut is seen from afar.
  Paint(Box(SheetsToGoBox), batch.SheetsToGo > 0 ? Role::Entry : Role::WarningMessage, Colours());
}

void BatchForm::Activated() {
  if (Editing()) return;  // the pad has closed: what was entered stays
  ShowRecord(System().Active().BatchCounters);
  Services().Poll.RefreshBatch(link::Asker::Operator);
  if (Visible() && !Editing()) ShowRecord(System().Active().BatchCounters);
}

void BatchForm::Unloaded() { System().Console.BatchEditing = false; }

void BatchForm::BoxPressed(int index) {
  if (Editing() && IsEditable(index)) EnterNumber(Box(index), EntryMode::Digits, 0);
}

double BatchForm::ValueOf(int index) const { return core::LeadingNumber(Box(index).Text()); }

void BatchForm::SetPressed() { Editing() ? TakeSettings() : ShowEditing(true); }

void BatchForm::TakeSettings() {
  const auto batch = supervision::BatchOf(ValueOf(PartsPerSheetBox), ValueOf(PartsRequiredBox),
                                          ValueOf(SheetsCompletedBox));
  if (!batch) {
    Warn("Invalid Batch Settings !");
    return;
  }
  ShowRecord(*batch);
  Store(*batch);
  ShowEditing(false);
}

void BatchForm::Store(const core::Batch& batch) {
  const std::string path =
      core::SlotFile(System().Directories, System().ActiveSlot, core::Extension::BatchCounters);
  if (supervision::StoreBatch(System(), Services().Files, Services().Downloads, batch)) return;
  Warn("Batch Counters Are Not Saved !", path);
}

void BatchForm::ClearPressed() {
  if (Editing()) {
    ShowEditing(false);
    ShowRecord(System().Active().BatchCounters);
    return;
  }
  ShowRecord({});
  Store({});
}

}  // namespace torvane::console
