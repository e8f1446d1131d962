// The SHA-256 of a program's text, by which the run journal knows it again.
#pragma once

#include <string>
#include <string_view>

#include "core/DirectorySet.h"
#include "core/Slot.h"
#include "platform/FileSystem.h"

namespace torvane::supervision {

/// 64 hex digits in small letters.
[[nodiscard]] std::string Sha256(std::string_view bytes);

/// That of the program as it stands in the slot, Actvprg<slot>.prg: what runs, whatever has become
/// of the source meanwhile. Empty where the file cannot be read.
[[nodiscard]] std::string SlotDigest(const platform::FileSystem& files,
                                     const core::DirectorySet& directories, core::Slot slot);

}  // namespace torvane::supervision
