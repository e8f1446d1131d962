#include "tools/PathLog.h"

#include "platform/RuntimeFault.h"

namespace torvane::tools {

PathLog::PathLog(const std::string& path) : file_(path, std::ios::binary | std::ios::trunc) {
  if (!file_) throw platform::RuntimeFault(path, "cannot be written");
}

void PathLog::Follow(simulator::Machine& machine) {
  machine.OnPath([this](const simulator::PathPiece& piece) {
    if (file_) file_ << simulator::PathPieceJson(piece) << '\n' << std::flush;
  });
}

}  // namespace torvane::tools
