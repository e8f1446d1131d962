#include "supervision/MessageList.h"

#include <algorithm>

#include "core/General.h"
#include "platform/RuntimeFault.h"

namespace torvane::supervision {

namespace {

constexpr std::size_t RowWidth = 80;
constexpr std::int32_t HighestIoCode = 64;
/// Bit 31 makes the word negative, and then no message of it shows.
constexpr int HighestLogicBit = 30;

std::string HelpFile(const core::DirectorySet& directories, const char* group, int number) {
  return directories.MessageHelpDirectory + group + "\\" + std::to_string(number) + ".hlp";
}

std::string RowText(std::string_view message) { return " " + std::string(core::Trim(message)); }

}  // namespace

std::string BlankRow() { return std::string(RowWidth, ' '); }

std::string ReceiveNotePath(const core::DirectorySet& directories) {
  return directories.MessageDirectory + "Receive.hlp";
}

void MessageList::Reset() {
  selectedMessage_ = 0;
  lastVr16_ = -1;
  lastVr17_ = -1;
  lastSelected_ = -1;
}

void MessageList::Select(int row) {
  selectedMessage_ = static_cast<std::int16_t>(std::clamp(row, 0, MessageRows));
}

void MessageList::MoveSelection(int step) {
  Select(selectedMessage_ + std::clamp(step, -MessageRows, MessageRows));
}

std::string MessageList::HelpPath(int row) const {
  if (row < 1 || row > count_) return {};
  return messageHelpPath_[static_cast<std::size_t>(row - 1)];
}

std::string MessageList::ControllerTexts() const {
  std::string texts;
  for (int row = 1; row <= controllerCount_; ++row) {
    if (!texts.empty()) texts.append(", ");
    texts.append(core::Trim(Row(row).Text));
  }
  return texts;
}

void MessageList::Add(std::string text, std::string helpPath) {
  if (count_ >= MessageRows) return;
  const auto index = static_cast<std::size_t>(count_++);
  rows_[index].Text = std::move(text);
  messageHelpPath_[index] = std::move(helpPath);
}

void MessageList::AddLogicMessages(std::int32_t bits, const core::MessageTables& tables,
                                   const core::DirectorySet& directories) {
  for (int bit = 0; bit <= HighestLogicBit; ++bit) {
    if ((bits & (std::int32_t{1} << bit)) == 0) continue;
    Add(RowText(tables.LogicMessages[static_cast<std::size_t>(bit)]),
        HelpFile(directories, "Logic", bit));
  }
}

void MessageList::HoldSelection() {
  if (selectedMessage_ == 0 && count_ > 0) selectedMessage_ = 1;
  selectedMessage_ = static_cast<std::int16_t>(
      std::min({static_cast<int>(selectedMessage_), MessageRows, count_}));
}

bool MessageList::Refresh(std::int32_t vr16, std::int32_t vr17, bool newProgramsReceived,
                          const core::MessageTables& tables,
                          const core::DirectorySet& directories) {
  if (vr16 == lastVr16_ && vr17 == lastVr17_ && newProgramsReceived == lastReceived_ &&
      selectedMessage_ == lastSelected_) {
    return false;
  }
  if (vr16 > HighestIoCode) {
    throw platform::RuntimeFault(
        directories.MessageDirectory + "IO.msg",
        "the controller sent code " + std::to_string(vr16) + ", and there is none above 64");
  }
  rows_.fill({BlankRow(), false});
  messageHelpPath_.fill({});
  count_ = 0;
  if (vr16 > 0) {
    Add(RowText(tables.IoMessages[static_cast<std::size_t>(vr16)]),
        HelpFile(directories, "IO", vr16));
  }
  if (vr17 > 0) AddLogicMessages(vr17, tables, directories);
  controllerCount_ = count_;
  if (newProgramsReceived) Add(" New Program(s) Received", ReceiveNotePath(directories));
  HoldSelection();
  if (selectedMessage_ >= 1) rows_[static_cast<std::size_t>(selectedMessage_ - 1)].Inverse = true;
  lastVr16_ = vr16;
  lastVr17_ = vr17;
  lastReceived_ = newProgramsReceived;
  lastSelected_ = selectedMessage_;
  return true;
}

}  // namespace torvane::supervision
