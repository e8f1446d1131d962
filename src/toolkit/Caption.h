// What a caption's text means: its accelerator, its lines, its literal ampersands.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace torvane::toolkit {

/// One line of a caption as it is shown. `Underlined` is the index of the accelerator's letter in
/// `Text`, -1 for none.
struct CaptionLine {
  std::string Text;
  int Underlined = -1;
};

/// A caption taken apart. With `NameOverKey` the last line is the name of a key ("F1" to "F12")
/// under the name of what it does, and is smaller.
struct CaptionText {
  std::vector<CaptionLine> Lines;
  bool NameOverKey = false;
};

/// "&" marks the letter after it, "&&" is an ampersand itself, one at the very end is dropped.
/// Only the first mark counts. Blanks stay as they are.
[[nodiscard]] CaptionLine ParseLine(std::string_view text);

/// A key's caption: blanks around it fall away, a line feed or a run of two and more blanks starts
/// a new line, so that "    PROGRAM     F1" is "PROGRAM" over "F1".
[[nodiscard]] CaptionText ParseCaption(std::string_view text);

/// The accelerator's character, a letter as a capital; 0 when the caption has none.
[[nodiscard]] char AcceleratorOf(std::string_view text);

}  // namespace torvane::toolkit
