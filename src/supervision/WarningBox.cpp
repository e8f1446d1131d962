#include "supervision/WarningBox.h"

namespace torvane::supervision {

namespace {

constexpr std::array<WarningLayout, 3> Layouts = {{
    {{nullptr, "&OK", nullptr}, 1, 1, 1},
    {{"&CANCEL", nullptr, "&OK"}, 2, 0, 2},
    {{"&NO", nullptr, "&YES"}, 2, 0, 2},
}};

}  // namespace

const WarningLayout& WarningLayoutOf(WarningMode mode) {
  return Layouts[static_cast<std::size_t>(mode) - static_cast<std::size_t>(WarningMode::Ok)];
}

std::optional<int> WarningKeyButton(char letter, const WarningLayout& layout) {
  switch (letter) {
    case 'O':
    case 'Y':
      return layout.Visible(2) ? 2 : 1;
    case 'C':
    case 'N':
      return 0;
    default:
      return std::nullopt;
  }
}

WarningImages WarningImagesOf(WarningStyle style) {
  switch (style) {
    case WarningStyle::Question:
      return WarningImages::Question;
    case WarningStyle::Information:
      return WarningImages::Information;
    case WarningStyle::Warning:
      break;
  }
  return WarningImages::Warning;
}

bool WarningBox::ShowWarning(std::string_view text, WarningMode mode, WarningStyle style,
                             const std::function<void()>& showModal) {
  if (up_) return false;
  int answer = 0;
  up_ = true;
  text_ = text;
  mode_ = mode;
  style_ = style;
  answer_ = &answer;
  struct AtEnd {
    WarningBox& Box;
    const int* Mine;
    ~AtEnd() {
      if (Box.answer_ == Mine) Box.Closed();
    }
  } const atEnd{*this, &answer};
  showModal();
  return answer != 0;
}

void WarningBox::Press(int button) {
  if (answer_ != nullptr) *answer_ = button >= 0 && button <= 2 ? button : 0;
}

void WarningBox::Closed() {
  up_ = false;
  text_.clear();
  answer_ = nullptr;
}

}  // namespace torvane::supervision
