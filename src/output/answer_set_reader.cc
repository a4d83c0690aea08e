#include "output/answer_set_reader.h"

#include <new>
#include <stdexcept>
#include <utility>

#include "base/parser_stacks.h"
#include "grammar.h"
#include "model/report.h"
#include "model/run.h"
#include "output/answer_events.h"
#include "output/output_scanner.h"
#include "output/reading_errors.h"
#include "output/sinks.h"

namespace zarel {
namespace {

constexpr int kMemoryExhausted = 2;

// Everything that one reading makes, gone at its end, whichever way it ends.
class Reading {
 public:
  Reading(AnswerSink& sink, const ReadingOptions& options, HasGrown grown = {})
      : events_(sink, options), input_(events_, std::move(grown)) {}

  outputScanner& input() { return input_; }

  int run() {
    int status = kMemoryExhausted;
    try {
      status = output_yyparse(input_.scanner(), events_, stacks_);
    } catch (const std::bad_alloc&) {
      report_exhaustion();
    } catch (const std::length_error&) {
      report_exhaustion();
    }
    events_.flush();
    return status;
  }

 private:
  void report_exhaustion() {
    events_.flush();
    output_yyerror("memory exhausted");
  }

  AnswerEvents events_;
  ParserStacks stacks_;
  outputScanner input_;
};

std::unique_ptr<AnswerSink> printing_sink() {
  return make_text_sink(standard_output(), current_run());
}

}    // namespace

int read_answer_sets(std::FILE* in, AnswerSink& sink, const ReadingOptions& options,
                     HasGrown grown) {
  Reading reading(sink, options, std::move(grown));
  reading.input().scan_file(in);
  return reading.run();
}

int read_answer_sets(std::string_view text, AnswerSink& sink, const ReadingOptions& options) {
  Reading reading(sink, options);
  reading.input().scan_text(text);
  return reading.run();
}

int read_answer_sets(std::FILE* in, HasGrown grown) {
  return read_answer_sets(in, *printing_sink(), {}, std::move(grown));
}

int read_answer_sets(std::string_view text) {
  return read_answer_sets(text, *printing_sink());
}

}    // namespace zarel
