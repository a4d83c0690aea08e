// host.cc - a program with Zarel in it: texts become a program for clingo, and what clingo answers
// becomes values. No file is written, no process started, and nothing shared with a second run.

#include <iostream>

#include "dl/answer_reader.h"
#include "zarel/program.h"

namespace {

constexpr std::string_view kFaulty = "p(a).\nq(X) :- p(X), .\n";
constexpr std::string_view kSalaries =
    "salary(anna,3100). salary(tom,2800).\n"
    "top(P) :- salary(P,S), maximum{salary($,*)}(S).\n"
    "tom[likes -> anna].\n";
constexpr std::string_view kMaximum =
    "#template maximum{value(1)}(1) {\n"
    "  maximum(X) :- value(X), X = #max{Y : value(Y)}.\n"
    "}\n";

// "file:line:column", the column in characters.
std::string shown(const zarel::Place& place, const zarel::Program& program) {
  if (!place.is_known()) return "-";
  return program.files()[place.first.file].name + ":" + std::to_string(place.first.line) + ":" +
         std::to_string(place.first.character);
}

void print_findings(const zarel::Program& program) {
  for (const zarel::Diagnostic& finding : program.findings()) {
    std::cout << shown(finding.place, program) << ": " << finding.text << " ["
              << zarel::kind_of(finding.code).name << "]\n";
  }
}

void print_with_origins(const zarel::Program& program) {
  std::istringstream text(program.text());
  std::size_t number = 0;
  for (std::string line; std::getline(text, line);) {
    const zarel::LineOrigin origin = program.origin_of_line(++number);
    std::cout << shown(origin.place, program) << ": " << line << "\n";
    for (const zarel::OriginStep& step : origin.steps) {
      if (step.template_name.empty()) continue;
      std::cout << "  by " << step.template_name << " at " << shown(step.invocation, program)
                << "\n";
    }
  }
}

// Takes what it wants of an answer; a filter would stand here too.
class AtomPrinter : public zarel::AnswerSink {
 public:
  void begin_answer_set(const zarel::AnswerSetStart& /*start*/) override { std::cout << "{\n"; }
  void atom(const zarel::AnswerAtom& atom) override {
    std::cout << (atom.is_negated ? " not " : " ") << atom.relation.text() << ":";
    for (const zarel::AnswerTerm& term : atom.arguments) std::cout << " " << term.text();
    std::cout << "\n";
  }
  void membership(const zarel::ClassStatement& /*statement*/) override {}
  void subclass(const zarel::ClassStatement& /*statement*/) override {}
  void object(const zarel::AnswerObject& object) override {
    for (const zarel::AnswerAttribute& attribute : object.attributes) {
      std::cout << " " << object.name.text() << " has " << attribute.name.text() << "\n";
    }
  }
  void end_answer_set() override { std::cout << "}\n"; }
  void cost(const zarel::AnswerCost& /*cost*/) override {}
  void query_row(const zarel::AnswerTerms& /*values*/) override {}
  void truth_value(bool /*holds*/) override {}
};

// What a solver would print of the program. A host runs its own clingo on `translation.text`; here
// are the lines that it prints.
std::string answer_sets_of(const dl::Translated& translation) {
  dl::AnswerReader reader(translation, dl::Reasoning::kCautious);
  reader.read_line(
      "a_2'top'd(anna) a_3'salary'd(anna,3100) a_3'salary'd(tom,2800) "
      "a_5'valueOf'dF'likes'_s_2d_3e(tom,anna)");
  reader.read_line("SATISFIABLE");
  reader.finish(dl::Search::kComplete, {});
  return reader.text();
}

}    // namespace

int main() {
  zarel::Program faulty;
  faulty.read_text(kFaulty, "faulty.zrl");
  print_findings(faulty);

  zarel::Program program({.links_templates = true});
  program.read_text(kSalaries, "salaries.zrl");
  program.read_text(kMaximum, "maximum.zrl");
  if (!program.rewrite()) return 1;    // findings() tells why
  print_with_origins(program);

  const dl::Source rewritten{"rewritten", program.text()};
  const dl::Translated translation = dl::translate({&rewritten, 1}, {});
  if (translation.mistake) return 1;    // its place is in program.text()
  AtomPrinter printer;
  return program.read_answers(answer_sets_of(translation), printer);
}
