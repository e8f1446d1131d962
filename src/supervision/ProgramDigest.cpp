#include "supervision/ProgramDigest.h"

#include <array>
#include <cstdint>

#include <nettle/sha2.h>

#include "core/SlotFiles.h"
#include "platform/RuntimeFault.h"

namespace torvane::supervision {

std::string Sha256(std::string_view bytes) {
  sha256_ctx context;
  sha256_init(&context);
  const std::vector<std::uint8_t> octets(bytes.begin(), bytes.end());
  sha256_update(&context, octets.size(), octets.data());
  std::array<std::uint8_t, SHA256_DIGEST_SIZE> digest{};
  sha256_digest(&context, digest.size(), digest.data());
  constexpr std::string_view Digits = "0123456789abcdef";
  std::string text;
  text.reserve(2 * digest.size());
  for (const std::uint8_t octet : digest) {
    text += Digits[octet >> 4U];
    text += Digits[octet & 15U];
  }
  return text;
}

std::string SlotDigest(const platform::FileSystem& files, const core::DirectorySet& directories,
                       core::Slot slot) {
  const std::string path = core::SlotFile(directories, slot, core::Extension::Program);
  try {
    return files.FileExists(path) ? Sha256(files.ReadFile(path)) : std::string();
  } catch (const platform::RuntimeFault&) {
    return {};  // the run goes on; its line says that the text is not known
  }
}

}  // namespace torvane::supervision
