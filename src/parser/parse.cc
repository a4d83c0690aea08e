#include "parser/parse.h"

#include "driver/diagnostics.h"
#include "grammar.hh"
#include "parser/scanner_actions.h"

int yylex_init_extra(zarel::ScannerActions* actions, void** scanner);
int yylex_destroy(void* scanner);
extern "C" int yywrap(void* scanner);

namespace zarel {
namespace {

constexpr int kMemoryExhausted = 2;    // what yyparse returns when its stack is at its limit

// The generated scanner's state, freed with it.
class Scanner {
 public:
  explicit Scanner(ScannerActions& actions) {
    if (yylex_init_extra(&actions, &state_) != 0) scanner_failed("out of dynamic memory");
  }
  ~Scanner() { yylex_destroy(state_); }
  Scanner(const Scanner&) = delete;
  Scanner& operator=(const Scanner&) = delete;
  void* state() const { return state_; }

 private:
  void* state_ = nullptr;
};

void parse(const ScannerInput& input, ProgramBuilder& builder, std::ostream& verbatim) {
  ScannerActions actions(input, builder.start_file(), verbatim);
  const Scanner scanner(actions);
  ParserStacks stacks;
  // A statement read by half must not be solved as if it were the whole program.
  if (yyparse(scanner.state(), stacks, builder) == kMemoryExhausted) ++report_state().parser_errors;
}

}    // namespace

void parse_file(std::FILE* file, ProgramBuilder& builder, std::ostream& verbatim) {
  parse(ScannerInput(file), builder, verbatim);
}

void parse_text(std::string_view text, ProgramBuilder& builder, std::ostream& verbatim) {
  parse(ScannerInput(text), builder, verbatim);
}

}    // namespace zarel

// One file is one stream of tokens.
extern "C" int yywrap(void* /*scanner*/) {
  return 1;
}
