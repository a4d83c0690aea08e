#include "parser/parse.h"

#include "grammar.h"
#include "parser/token_scanner.h"

namespace zarel {
namespace {

void parse(const ScannerInput& input, std::uint32_t file, ProgramBuilder& builder,
           std::ostream& verbatim) {
  const WorkScope reading(Work{{file, {1, 1, 1, 1}}, OriginId::kWritten, nullptr});
  builder.start_file();
  ScannerActions actions(input, file, verbatim, builder.terms().short_constants());
  const scannerT scanner(actions);
  ParserStacks stacks;
  yyparse(scanner.state(), stacks, builder);
}

}    // namespace

void parse_file(std::FILE* in, std::uint32_t file, ProgramBuilder& builder,
                std::ostream& verbatim) {
  parse(ScannerInput(in), file, builder, verbatim);
}

void parse_text(std::string_view text, std::uint32_t file, ProgramBuilder& builder,
                std::ostream& verbatim) {
  parse(ScannerInput(text), file, builder, verbatim);
}

}    // namespace zarel
