// Everything that the store, the change and the selection of programs work with.
#pragma once

#include "core/System.h"
#include "link/Downloads.h"
#include "link/Trio.h"
#include "platform/FileSystem.h"
#include "supervision/OperatorDialogs.h"
#include "supervision/PollScreens.h"
#include "supervision/PollTrio.h"
#include "supervision/ProgramScreens.h"

namespace torvane::supervision {

struct ProgramParts {
  core::System& System;
  link::Trio& Trio;
  link::Downloads& Downloads;
  platform::FileSystem& Files;
  OperatorDialogs& Dialogs;
  ProgramScreens& Screens;
  PlotStage& Plot;
  supervision::Poll& Poll;
};

}  // namespace torvane::supervision
