#pragma once
// program.h - a program, from its texts to what a solver reads: what a host of the library calls.

#include <cstdio>
#include <functional>
#include <optional>
#include <span>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "model/run.h"
#include "output/answer_set_reader.h"
#include "parser/fact_builder.h"
#include "zarel/input_reader.h"
#include "zarel/program_text.h"

namespace zarel {

// What made a line of the rewritten program out of the user's text, from the inside outwards: the
// first step made the line itself, each further one the invocation of the step before.
struct OriginStep {
  OriginKind kind = OriginKind::kWritten;
  std::string template_name;    // when it is a template, or made something in its expansion
  Place invocation;             // of that template
};

// Where a line of the rewritten program comes from.
struct LineOrigin {
  Place place;                      // not known for a line that there is not
  bool is_verbatim = false;         // copied from there, character by character
  std::vector<OriginStep> steps;    // none for what was written so, but for its encoding
};

// One program and its run. Several live side by side, each used by one thread at a time; nothing is
// shared. No file is written, and nothing of the process is touched.
class Program {
 public:
  // Findings are kept, or handed to `sink` as they come.
  explicit Program(const RunOptions& options = {}, DiagnosticSink sink = {});

  // Adds a file, or a text that has to last as long as the program, which findings call `name`.
  // What is wrong is among the findings; behind what cannot be gone on from, nothing is read.
  void read_file(const std::string& path);
  void read_text(std::string_view text, std::string_view name);

  // Adds the facts that `give` makes of a file of data, of which messages tell places; its path is
  // empty when it has no lines that could be shown.
  void read_facts(const std::string& path, std::string_view name,
                  const std::function<void(FactBuilder&)>& give);

  // When all is read: expands the templates, and makes the text. Returns whether the program can be
  // solved; otherwise the findings say why not, and there is no text. A text without plain facts is
  // there to be looked at, not to be solved.
  bool rewrite(PlainFacts facts = PlainFacts::kWritten);

  const std::string& text() const { return rewritten_.text; }

  // Hands the text over.
  std::string take_text() { return std::exchange(rewritten_.text, {}); }

  // Where in the text nothing but plain facts stand; also when it was handed over.
  std::span<const TextStretch> plain_facts() const { return rewritten_.plain_facts; }

  // Frees what was needed to make the text. Findings, the origins of lines and answers are as
  // before; nothing more can be read or rewritten.
  void forget_clauses();

  std::string verbatim() const { return verbatim_.str(); }    // what its sections hand on
  LineOrigin origin_of_line(std::size_t line) const;          // of the text, from 1

  // Tells the sink what a solver answered to the text, as read_answer_sets does: see there for what
  // is returned. A reading that cannot go on ends as after a syntax error, with a finding.
  int read_answers(std::string_view solver_output, AnswerSink& sink);
  int read_answers(std::FILE* solver_output, AnswerSink& sink);

  // What is wrong, in the order in which it was found; nothing when a sink takes it. Behind the
  // first 10,000 findings the rest is only counted.
  std::span<const Diagnostic> findings() const { return run_.findings.kept; }
  std::size_t findings_left_out() const { return run_.findings.left_out; }
  const FileTable& files() const { return run_.files; }    // by the numbers in places

  Run& run() { return run_; }

 private:
  bool attempt(const std::function<void()>& action);
  template <class Source>
  int read_answers_from(Source source, AnswerSink& sink);

  Run run_;
  std::ostringstream verbatim_;
  std::optional<InputReader> reader_;      // made inside the run
  bool has_ended_ = false;                 // by a finding that nothing can go on from
  std::optional<QueryForm> query_form_;    // once the query itself is gone
  MappedText rewritten_;
};

}    // namespace zarel
