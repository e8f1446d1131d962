// Everything that the handling of programs and directories works with.
#pragma once

#include <functional>

#include "core/System.h"
#include "platform/Drives.h"
#include "platform/FileSystem.h"
#include "supervision/OperatorDialogs.h"

namespace torvane::files {

struct FileParts {
  core::System& System;
  platform::FileSystem& Files;
  const platform::Drives& Drives;
  supervision::OperatorDialogs& Dialogs;
  /// Lets the rest of the console live between two steps of a long action: the poll, keys,
  /// painting. Anything may have happened when it returns. Empty where nothing else runs.
  std::function<void()> Yield = {};

  void Breathe() const {
    if (Yield) Yield();
  }
};

}  // namespace torvane::files
