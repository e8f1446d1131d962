#include "platform/ClosedStreams.h"

#include <initializer_list>

#include <fcntl.h>
#include <unistd.h>

namespace torvane::platform {

void FillClosedStreams() {
  for (const int number : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
    if (::fcntl(number, F_GETFD) == -1) (void)::open("/dev/null", O_RDONLY);
  }
}

}  // namespace torvane::platform
