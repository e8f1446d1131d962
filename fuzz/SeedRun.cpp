// Takes the place of libFuzzer where the targets are tests: the files that are named, or, without
// any, inputs of a few sizes. A finding ends the program as it would under libFuzzer.
#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>

#include "FuzzInput.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace {

void Run(const std::string& bytes) {
  LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
}

}  // namespace

int main(int argc, char** argv) {
  for (int i = 1; i < argc; ++i) {
    std::ifstream in(argv[i], std::ios::binary);
    if (!in) {
      std::fprintf(stderr, "%s: cannot be read\n", argv[i]);
      return 1;
    }
    Run({std::istreambuf_iterator<char>(in), {}});
  }
  constexpr int Patterns = 256;
  constexpr std::size_t Sizes[] = {0, 1, 2, 3, 16, 600, 4096};
  for (const std::size_t size : Sizes) {
    for (int pattern = 0; argc == 1 && pattern < Patterns; pattern += 15) {
      std::string bytes(size, '\0');
      for (std::size_t at = 0; at < size; ++at) {
        bytes[at] = static_cast<char>(pattern + static_cast<int>(at) * (pattern % 2));
      }
      Run(bytes);
    }
  }
  return 0;
}
