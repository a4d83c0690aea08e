#include "output/reading_errors.h"

#include <string>

#include "model/run.h"
#include "output/answer_set_reader.h"

namespace zarel {
namespace {

// The generator names its functions without their prefix. Its messages carry the names that callers
// know, except for the one function that is not theirs to call.
std::string with_established_names(std::string text) {
  const std::size_t name = text.find(" in yy");
  if (name != std::string::npos && text.find("yy_get_next_buffer") == std::string::npos) {
    text.insert(name + 4, "output_");
  }
  return text;
}

// As the established texts have it.
constexpr std::string_view kUnreadable = "can't open input";
constexpr std::string_view kExhausted = "memory exhausted";

Code code_of(std::string_view message) {
  if (message == kUnreadable) return Code::kUnreadableAnswers;
  return message == kExhausted ? Code::kAnswersTooDeep : Code::kAnswerSyntax;
}

}    // namespace

void output_yyerror(std::string_view message) {
  report({code_of(message), {}, std::string(message)});
}

void count_line() {
  ++current_run().findings.parser_line;
}

void end_unread() {
  output_yyerror(kUnreadable);
  end_run(0);
}

void end_unwritten() {
  end_run(1);
}

void end_unscanned(const char* message) {
  report_and_end({Code::kAnswerScanner, {}, with_established_names(message)}, 2);
}

}    // namespace zarel
