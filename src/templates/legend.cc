#include "templates/legend.h"

#include <ostream>

#include "base/text.h"

namespace zarel {

// The legend becomes part of the program: a line of a string that were no comment would be a
// statement.
void write_legend_line(std::ostream& legend, std::string_view text) {
  Text lines("% ");
  std::size_t begin = 0;
  std::size_t end = text.find('\n');
  for (; end != std::string_view::npos; end = text.find('\n', begin)) {
    lines += text.substr(begin, end - begin);
    lines += "\n% ";
    begin = end + 1;
  }
  lines += text.substr(begin);
  lines += " at line \n";
  legend.write(lines.view().data(), static_cast<std::streamsize>(lines.size()));
}

}    // namespace zarel
