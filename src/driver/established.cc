#include "driver/established.h"

#include <ostream>

#include "driver/diagnostics.h"
#include "model/run.h"

namespace zarel {

int yyerror(std::string_view message) {
  show_with_line(message, current_run().findings.parser_line);
  return 0;
}

void InternalError(std::string_view text) {
  standard_error()
      << "\nAn internal error occurred (" << text << ").\n"
      << "Please report it to the maintainers of Zarel, with the program that led to it.\n"
      << std::flush;
  SafeExit(99);
}

}    // namespace zarel
