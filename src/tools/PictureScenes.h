// The scenes that the pictures of the console are taken from.
#pragma once

#include "tools/PictureStage.h"

namespace torvane::tools {

/// Starts the console and plays all scenes, one after the other. The installation of the stage
/// is the example installation with MakeLongNames done to it.
void PlayScenes(PictureStage& stage);

/// Puts a program with the longest name there is beside the others of the installation in
/// `folder`, a native path.
void MakeLongNames(const std::string& folder);

}  // namespace torvane::tools
