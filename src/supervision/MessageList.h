// What the message screen lists: the conditions in force now. There is no history.
#pragma once

#include <array>
#include <cstdint>
#include <string>

#include "core/DirectorySet.h"
#include "core/System.h"

namespace torvane::supervision {

/// Lines of the message screen.
inline constexpr int MessageRows = 18;

/// A row of a list of the console; `Inverse` is shown with text and background exchanged.
struct ListRow {
  std::string Text;
  bool Inverse = false;
};

/// 80 blanks: how a row without a text is shown.
[[nodiscard]] std::string BlankRow();

class MessageList {
 public:
  /// Of the screen that comes up: nothing chosen, and the next refresh builds the list anew.
  void Reset();

  /// Takes the two numbers of the controller. True when the list was built anew and is to be shown;
  /// false when nothing has changed since the last time.
  /// Throws RuntimeFault for a code above 64: there is no such message, and the program ends.
  bool Refresh(std::int32_t vr16, std::int32_t vr17, bool newProgramsReceived,
               const core::MessageTables& tables, const core::DirectorySet& directories);

  /// Row 1 to 18; the list shows it at the next refresh.
  void Select(int row);

  /// Up (-1) or down (1) one row. Never above the first.
  void MoveSelection(int step);

  /// The chosen row, 0 none.
  [[nodiscard]] int SelectedMessage() const { return selectedMessage_; }
  /// Rows in use.
  [[nodiscard]] int Count() const { return count_; }
  /// Row 1 to 18.
  [[nodiscard]] const ListRow& Row(int row) const {
    return rows_.at(static_cast<std::size_t>(row - 1));
  }
  /// The messages of the controller among the rows, divided by commas.
  [[nodiscard]] std::string ControllerTexts() const;
  /// The help file of a row; empty where there is none.
  [[nodiscard]] std::string HelpPath(int row) const;

 private:
  void Add(std::string text, std::string helpPath);
  void AddLogicMessages(std::int32_t bits, const core::MessageTables& tables,
                        const core::DirectorySet& directories);
  void HoldSelection();

  std::int32_t lastVr16_ = -1;
  std::int32_t lastVr17_ = -1;
  bool lastReceived_ = false;
  std::int16_t selectedMessage_ = 0;
  std::int16_t lastSelected_ = -1;
  int count_ = 0;
  int controllerCount_ = 0;  ///< rows of the controller, the first ones
  std::array<ListRow, MessageRows> rows_;
  std::array<std::string, MessageRows> messageHelpPath_;
};

/// The notes on received programs, which are the help text of their message.
[[nodiscard]] std::string ReceiveNotePath(const core::DirectorySet& directories);

}  // namespace torvane::supervision
