#include "templates/legend.h"

#include <algorithm>
#include <ostream>

namespace zarel {

// The legend becomes part of the program: a line of a string that were no comment would be a
// statement.
void write_legend_line(std::ostream& legend, std::string_view text) {
  std::size_t begin = 0;
  while (begin <= text.size()) {
    const std::size_t end = std::min(text.find('\n', begin), text.size());
    legend << (begin == 0 ? "% " : "\n% ") << text.substr(begin, end - begin);
    begin = end + 1;
  }
  legend << " at line \n";
}

}    // namespace zarel
