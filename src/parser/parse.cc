#include "parser/parse.h"

#include "driver/diagnostics.h"
#include "driver/parser_stacks.h"
#include "grammar.hh"
#include "parser/scanner_actions.h"
#include "parser/scanner_input.h"

void yyrestart(std::FILE* file);
int yylex_destroy();
extern "C" int yywrap();

namespace zarel {
namespace {

constexpr int kMemoryExhausted = 2;    // what yyparse returns when its stack is at its limit

// Leaves the parser as it was found, however the file ends.
struct ParserReset {
  ParserReset() = default;
  ParserReset(const ParserReset&) = delete;
  ParserReset& operator=(const ParserReset&) = delete;
  ~ParserReset() {
    yylex_destroy();
    parser_stacks().clear();
  }
};

}    // namespace

int read_input(std::FILE* file, char* buffer, std::size_t size) {
  const std::size_t length = std::fread(buffer, 1, size, file);
  if (length == 0 && std::ferror(file) != 0) scanner_failed("input in flex scanner failed");
  return static_cast<int>(length);
}

void scanner_failed(const char* message) {
  yyerror(message);
  SafeExit(1);
}

void parse_file(std::FILE* file, ProgramBuilder& builder, std::ostream& verbatim) {
  const ParserReset reset;
  scanner_actions().start_file(verbatim);
  yyrestart(file);
  // A statement read by half must not be solved as if it were the whole program.
  if (yyparse(builder) == kMemoryExhausted) ++report_state().parser_errors;
}

}    // namespace zarel

// One file is one stream of tokens.
extern "C" int yywrap() {
  return 1;
}
