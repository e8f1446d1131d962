#include "console/BlockStartForm.h"

#include "console/ConsoleServices.h"
#include "console/ScreenSet.h"
#include "core/ScreenNames.h"
#include "restart/BlockRestart.h"

namespace torvane::console {

namespace {

constexpr int RowsInView = 21;
constexpr int PageUp = 1;
constexpr double SideWide = 216;

/// Beside the line that ran last.
constexpr const char* RanLast = "RAN LAST";

}  // namespace

BlockStartForm::BlockStartForm(const ScreenStart& start) : Screen(start) {
  list_ = &AddList(Body(), "BlockList");
  list_->SetVisibleLines(RowsInView);
  const auto pages = AddButtons(Body(), "PageButton", 1, {"    PAGE      &UP", "PAGE &DOWN"},
                                Role::General, [this](int index) { PagePressed(index); });
  select_ =
      &AddButton(Body(), "SelectButton", "&SELECT", Role::General, [this] { SelectPressed(); });
  auto& exit = AddExitButton(Body());
  SetHome(*list_);
  SetGrid(928, Columns({*list_, Rows({Rows(CellsOf(pages)), Space().Share(1), *select_, exit})
                                    .Spaced(SectionGap)
                                    .Wide(SideWide)})
                   .Spaced(SectionGap));
}

void BlockStartForm::Loaded() {
  std::vector<std::string> rows = Services().Blocks.Begin();
  std::vector<std::string> details(rows.size());
  const int last = Services().Blocks.LastRunRow();
  if (last >= 0) details[static_cast<std::size_t>(last)] = RanLast;
  list_->SetItems(std::move(rows));
  list_->SetDetails(std::move(details));
  if (list_->Count() > 0) list_->SetCurrent(0);
  select_->SetEnabled(list_->Count() > 0);
}

void BlockStartForm::PagePressed(int index) {
  const restart::ListPosition moved =
      restart::MovePage({list_->Current(), list_->TopLine()}, list_->Count(), index == PageUp);
  list_->SetCurrent(moved.Selected);
  list_->SetTopLine(moved.Top);
}

void BlockStartForm::SelectPressed() {
  if (Services().Blocks.Select(list_->Current())) Unload();
}

bool BlockStartForm::OtherKey(const toolkit::KeyStroke& stroke) { return list_->KeyDown(stroke); }

void BlockStartForm::Unloaded() {
  if (Services().Blocks.Unload()) Screens().Open(core::ScreenNames::RestartForm);
}

}  // namespace torvane::console
