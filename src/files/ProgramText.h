// Reading a text file for the operator's eyes, and putting an edited one back.
#pragma once

#include <optional>
#include <string>

#include "files/EditDocument.h"
#include "files/FileParts.h"

namespace torvane::files {

/// What the editor is given: the text in its label, a second part of it, and the file.
struct EditTask {
  std::string EditTitle;
  std::string EditDirectory;
  std::string EditPath;
};

/// Lines of a file as they are, noted as the last file touched. Nothing for a missing one.
[[nodiscard]] std::optional<std::vector<std::string>> ReadTextLines(const FileParts& parts,
                                                                    const std::string& path);

/// Reads the file into the document; a missing one gives an empty text. Throws RuntimeFault for a
/// file that is there and cannot be read.
void LoadDocument(const FileParts& parts, const std::string& path, EditDocument& document);

/// Replaces the file whole. False after a fault, which the operator has been shown: the file is as
/// it was, and the document keeps what was typed.
[[nodiscard]] bool SaveDocument(const FileParts& parts, const std::string& path,
                                EditDocument& document);

}  // namespace torvane::files
