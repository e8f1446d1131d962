// What the lists and the search have in common: a chosen program, a look into it, and the way back
// to the program screen.
#pragma once

#include <optional>
#include <string>

#include "console/ProgramForm.h"
#include "console/Screen.h"

namespace torvane::console {

class ChooserForm : public Screen {
 protected:
  explicit ChooserForm(const ScreenStart& start) : Screen(start) {}

  /// The entries under the selection; nothing where a list has none.
  [[nodiscard]] virtual std::optional<std::string> ChosenDirectory() const = 0;
  [[nodiscard]] virtual std::optional<std::string> ChosenProgram() const = 0;
  /// The list that the keys steer.
  [[nodiscard]] virtual toolkit::ListBox& SteeredList() = 0;

  /// Lists and keys of the screen; the view takes their place while it is open.
  void SetContents(double width, toolkit::Frame& lists, const Cell& listCells);
  /// "&VIEW", "&OK" and "&CANCEL" in their row.
  [[nodiscard]] Cell MakeKeys();

  bool FirstLook(const toolkit::KeyStroke& stroke) override;

 private:
  void MakeView();
  [[nodiscard]] std::optional<SelectedProgram> Checked();
  void WithoutEnding(const Handler& action);
  void OkPressed();
  void ViewPressed();
  void ShowView(bool view);

  toolkit::Frame* lists_ = nullptr;
  toolkit::Frame* keys_ = nullptr;
  toolkit::Frame* viewFrame_ = nullptr;
  toolkit::ListBox* viewBox_ = nullptr;
  toolkit::Button* viewOk_ = nullptr;
};

}  // namespace torvane::console
