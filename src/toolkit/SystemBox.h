// The window system's own message box, made for fingers.
#pragma once

#include <QMessageBox>

namespace torvane::toolkit {

/// Keys as high as those of the console and text to be read from where the operator stands; the
/// console's own measures may not be known yet when such a box is needed.
void PrepareForFingers(QMessageBox& box);

}  // namespace torvane::toolkit
