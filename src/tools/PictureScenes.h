// The scenes that the pictures of the console are taken from.
#pragma once

#include "tools/PictureStage.h"

namespace torvane::tools {

/// Starts the console and plays all scenes, one after the other. The installation of the stage
/// is the example installation after PrepareInstallation.
void PlayScenes(PictureStage& stage);

/// Makes the example installation in `folder`, a native path, ready for the scenes: a program with
/// the longest name there is beside the others, all of one day, and a second port whose sends wait
/// for the operator.
void PrepareInstallation(const std::string& folder);

}  // namespace torvane::tools
