#include "output/answer_set_reader.h"

#include <new>
#include <stdexcept>
#include <utility>

#include "base/parser_stacks.h"
#include "grammar.h"
#include "model/run.h"
#include "output/answer_set_builder.h"
#include "output/scanner_input.h"

namespace zarel {
namespace {

constexpr int kMemoryExhausted = 2;

// As the established texts have it.
constexpr std::string_view kUnreadable = "can't open input";
constexpr std::string_view kExhausted = "memory exhausted";

Code code_of(std::string_view message) {
  if (message == kUnreadable) return Code::kUnreadableAnswers;
  return message == kExhausted ? Code::kAnswersTooDeep : Code::kAnswerSyntax;
}

// Everything that one reading makes, gone at its end, whichever way it ends.
class Reading {
 public:
  explicit Reading(HasGrown grown = {}) : input_(builder_, std::move(grown)) {}

  ScannerInput& input() { return input_; }

  int run() {
    int status = kMemoryExhausted;
    try {
      status = output_yyparse(input_.scanner(), builder_, stacks_);
    } catch (const std::bad_alloc&) {
      report_exhaustion();
    } catch (const std::length_error&) {
      report_exhaustion();
    }
    builder_.print_completed();
    return status;
  }

 private:
  void report_exhaustion() {
    builder_.print_completed();
    output_yyerror(kExhausted);
  }

  AnswerSetBuilder builder_;
  ParserStacks stacks_;
  ScannerInput input_;
};

}    // namespace

int read_answer_sets(std::FILE* in, HasGrown grown) {
  Reading reading(std::move(grown));
  reading.input().scan_file(in);
  return reading.run();
}

int read_answer_sets(std::string_view text) {
  Reading reading;
  reading.input().scan_text(text);
  return reading.run();
}

void output_yyerror(std::string_view message) {
  report({code_of(message), {}, std::string(message)});
}

}    // namespace zarel
