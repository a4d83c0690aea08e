#include "workbench/answers/terminal_width.h"

#include <charconv>
#include <cstdlib>
#include <string_view>
#include <sys/ioctl.h>
#include <unistd.h>

namespace workbench {

std::size_t terminal_width(int descriptor) {
  constexpr std::size_t kUsual = 80;
  if (::isatty(descriptor) == 0) return 0;
  const char* const set = std::getenv("COLUMNS");    // NOLINT(concurrency-mt-unsafe): no threads
  const std::string_view text = set == nullptr ? "" : set;
  std::size_t columns = 0;
  std::from_chars(text.data(), text.data() + text.size(), columns);
  if (columns != 0) return columns;
  winsize size{};
  if (::ioctl(descriptor, TIOCGWINSZ, &size) == 0 && size.ws_col != 0) return size.ws_col;
  return kUsual;
}

}    // namespace workbench
