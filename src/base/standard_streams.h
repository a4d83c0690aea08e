#pragma once
// standard_streams.h - the three descriptors that a program is started with, or should be.

#include <fcntl.h>
#include <unistd.h>

namespace zarel {

// A file that is opened while a standard stream is closed gets its number, and then all that is
// printed. So something takes these numbers first that, like a closed stream, can be neither read
// nor written.
inline void occupy_closed_streams() {
  int descriptor = STDIN_FILENO;
  while (descriptor >= STDIN_FILENO && descriptor <= STDERR_FILENO) {
    descriptor = ::open("/", O_PATH);
  }
  if (descriptor > STDERR_FILENO) static_cast<void>(::close(descriptor));
}

}    // namespace zarel
