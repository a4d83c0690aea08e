#include "output/answer_set_reader.h"

#include <new>
#include <stdexcept>
#include <utility>

#include "driver/diagnostics.h"
#include "driver/parser_stacks.h"
#include "output/answer_set_builder.h"
#include "output/scanner_input.h"
#include "output_grammar.h"
#include "output_scanner.h"

namespace zarel {
namespace {

constexpr int kMemoryExhausted = 2;

// Everything that one reading makes, gone at its end, whichever way it ends: the next one finds all
// as new.
class Reading {
 public:
  Reading() = default;
  Reading(const Reading&) = delete;
  Reading& operator=(const Reading&) = delete;
  ~Reading() {
    output_yylex_destroy();
    begin_input({});
    parser_stacks().clear();
    answer_set_builder().reset();
  }

  int run() {
    int status = kMemoryExhausted;
    try {
      status = output_yyparse();
    } catch (const std::bad_alloc&) {
      output_yyerror("memory exhausted");
    } catch (const std::length_error&) {
      output_yyerror("memory exhausted");
    }
    answer_set_builder().print_completed();
    return status;
  }
};

}    // namespace

int read_answer_sets(std::FILE* in, HasGrown grown) {
  Reading reading;
  begin_input(std::move(grown));
  output_yyrestart(in);
  return reading.run();
}

int read_answer_sets(std::string_view text) {
  Reading reading;
  scan_text(text);
  return reading.run();
}

void output_yyerror(std::string_view message) {
  answer_set_builder().print_completed();
  yyerror(message);
}

}    // namespace zarel
