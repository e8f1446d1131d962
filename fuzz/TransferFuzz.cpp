// The receiver on any stream under any port file. The first byte says how much of the rest is the
// port file, the second how long the chunks of the stream are. No fault may come out, nothing may
// be written but where programs, notes and Receive.tmp belong, and the chunks change nothing.
#include <map>
#include <string>

#include "FuzzFiles.h"
#include "FuzzInput.h"
#include "core/TransferFile.h"
#include "files/Receiver.h"

namespace {

using torvane::fuzz::FuzzFiles;

FuzzFiles Receive(std::string_view settings, std::string_view stream, std::size_t chunk) {
  torvane::core::System system;
  FuzzFiles files;
  system.Comms = torvane::core::ReadTransferFile(settings);
  system.Directories.ProgramRoot = "P\\";
  system.Directories.ProgramDirectoryName = "SHOP";
  torvane::files::Receiver receiver(system, files);
  receiver.SetUp();
  for (; !stream.empty(); stream.remove_prefix(std::min(chunk, stream.size()))) {
    receiver.ReceiveChars(stream.substr(0, chunk));
  }
  return files;
}

bool BelongsThere(const std::string& path) {
  if (path == "Receive.tmp" || path == "Receive.hlp" || path == "Service\\LastFile.txt")
    return true;
  const auto name = path.find('\\', 2);
  return path.starts_with("P\\") && path.ends_with(".prg") && name != std::string::npos &&
         path.find('\\', name + 1) == std::string::npos && path.find("..") == std::string::npos;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  if (size < 2) return 0;
  const std::string_view text = torvane::fuzz::TextOf(data + 2, size - 2);
  const std::string_view settings = text.substr(0, data[0]);
  const std::string_view stream = text.substr(settings.size());
  const FuzzFiles whole = Receive(settings, stream, stream.size() + 1);
  for (const auto& [path, bytes] : whole.Files) {
    if (!BelongsThere(path)) __builtin_trap();
  }
  if (Receive(settings, stream, data[1] % 16 + 1U).Files != whole.Files) __builtin_trap();
  return 0;
}
