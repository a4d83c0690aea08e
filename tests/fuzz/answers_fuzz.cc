// answers_fuzz.cc - the reader of the solver's output. What is printed without options prints the
// same again when it is put back into the solver's format; blanks between tokens change nothing;
// and the terms of events, taken apart, are the text that they are taken from.

#include <fcntl.h>
#include <sstream>

#include "answer_encoding.h"
#include "driver/diagnostics.h"
#include "harness.h"
#include "model/namespaces.h"
#include "model/run.h"
#include "output/answer_set_reader.h"
#include "output/display_settings.h"
#include "zarel/input_file.h"

namespace {

struct Printed {
  int status = 0;
  std::string text;
  std::string messages;
};

template <class Source>
Printed printed(const Source& source) {
  std::ostringstream output;
  std::ostringstream messages;
  zarel::show_findings(output, messages);
  zarel::current_run().findings.parser_line = 0;
  Printed result;
  try {
    result.status = zarel::read_answer_sets(source);
  } catch (const zarel::RunEnd& end) {
    result.status = end.status;
  }
  result.text = std::move(output).str();
  result.messages = std::move(messages).str();
  return result;
}

// Takes the terms of all events apart in both ways and puts them together again.
class TermChecker : public zarel::AnswerSink {
 public:
  void begin_answer_set(const zarel::AnswerSetStart& /*start*/) override {}
  void atom(const zarel::AnswerAtom& atom) override {
    check(zarel::AnswerTerms(atom.relation.text()));
    check(atom.arguments);
  }
  void membership(const zarel::ClassStatement& statement) override { check_class(statement); }
  void subclass(const zarel::ClassStatement& statement) override { check_class(statement); }
  void object(const zarel::AnswerObject& object) override {
    check(zarel::AnswerTerms(object.name.text()));
    for (const zarel::AnswerAttribute& attribute : object.attributes) {
      check(zarel::AnswerTerms(attribute.name.text()));
      for (const zarel::AnswerTerm& value : attribute.values) {
        check(zarel::AnswerTerms(value.text()));
      }
    }
  }
  void end_answer_set() override {}
  void cost(const zarel::AnswerCost& /*cost*/) override {}
  void query_row(const zarel::AnswerTerms& values) override { check(values); }
  void truth_value(bool /*holds*/) override {}

 private:
  void check_class(const zarel::ClassStatement& statement) {
    check(zarel::AnswerTerms(statement.object.text()));
    check(zarel::AnswerTerms(statement.class_name.text()));
  }
  static void check(const zarel::AnswerTerms& terms) {
    fuzz::expect_equal("iterated", terms.text(), iterated(terms));
    fuzz::expect_equal("walked through", terms.text(), walked(terms));
  }
  static std::string iterated(const zarel::AnswerTerms& terms) {
    std::string text;
    for (const zarel::AnswerTerm& term : terms) {
      if (!text.empty()) text += ',';
      const bool is_function = term.kind() == zarel::AnswerTerm::Kind::kFunction;
      text += is_function ? term.name() : term.text();
      if (is_function) text.append("(").append(term.arguments().text()).append(")");
    }
    return text;
  }
  static std::string walked(const zarel::AnswerTerms& terms) {
    using Step = zarel::TermWalk::Step;
    std::string text;
    zarel::TermWalk walk(terms);
    for (Step step = walk.next(); step != Step::kEnd; step = walk.next()) {
      if (step == Step::kEndFunction) {
        text += ')';
        continue;
      }
      if (!text.empty() && text.back() != '(') text += ',';
      text += walk.term().text();
      if (step == Step::kBeginFunction) text += '(';
    }
    return text;
  }
};

void check_terms(std::string_view text) {
  std::ostringstream messages;
  zarel::show_findings(messages, messages);
  TermChecker checker;
  zarel::read_answer_sets(text, checker, {.namespaces = &zarel::vectorName()});
}

// As the command line says; with one name space that the program is taken to have used.
void set_display(const zarel::Options& options) {
  zarel::DisplaySettings& display = zarel::display_settings();
  display.set_filters(options.filters, options.positive_filters);
  display.space = !options.shows_frame_spaces;
  display.address = !options.shows_uris;
  zarel::vectorName().declare("ex", "\"http://example.org/#\"");
  zarel::note_prefix_use();
}

}    // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const fuzz::Input input = fuzz::read_input(data, size);
  zarel::Run run;
  const zarel::Run::Scope scope(run);
  if (!input.words.empty()) set_display(fuzz::zarel_options(input.words));
  const fuzz::MemoryFile file(input.text);
  // By its descriptor: opened by its path, a file would have its first piece in its buffer already.
  const zarel::InputFile answers(::open(file.path().c_str(), O_RDONLY | O_CLOEXEC));
  const Printed first = printed(answers.handle());
  const Printed spread = printed(std::string_view(fuzz::with_blanks(input.text)));
  fuzz::expect_equal("the same with blanks", first.text + first.messages,
                     spread.text + spread.messages);
  check_terms(input.text);
  if (!input.words.empty() || first.status != 0) return 0;
  const auto encoded = fuzz::encoded_answers(first.text);
  if (!encoded) return 0;
  const std::string again = printed(std::string_view(*encoded)).text;
  if (again == first.text || fuzz::has_unknown_arrow(input.text)) return 0;
  fuzz::expect_equal("printed again from\n" + *encoded, first.text, again);
  return 0;
}
