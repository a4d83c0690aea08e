#include "dl/mistake.h"

namespace dl {

zarel::Diagnostic diagnostic_of(const Mistake& mistake, const Sources& sources,
                                std::uint32_t file) {
  zarel::Diagnostic diagnostic{mistake.code, sources.place(sources.range(file, mistake.at)),
                               mistake.text};
  diagnostic.parser_line = static_cast<int>(mistake.line);
  diagnostic.detail = mistake.detail;
  if (mistake.elsewhere) {
    diagnostic.notes.push_back({sources.place(mistake.elsewhere->range), mistake.elsewhere->text});
  }
  return diagnostic;
}

}    // namespace dl
