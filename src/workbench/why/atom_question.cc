#include "workbench/why/atom_question.h"

#include <algorithm>
#include <filesystem>
#include <set>
#include <utility>

#include "base/text.h"
#include "model/printer.h"
#include "model/run.h"
#include "parser/written_statement.h"
#include "templates/generated_predicates.h"
#include "workbench/messages/findings.h"
#include "workbench/messages/reporter.h"
#include "workbench/messages/source_texts.h"
#include "workbench/messages/words.h"
#include "workbench/why/user_statements.h"

namespace workbench {
namespace {

using zarel::WrittenKind;
using zarel::WrittenNode;
using zarel::WrittenStatement;

constexpr std::string_view kCode = "no-atom";
constexpr std::string_view kHelp = "ask about one atom or frame, such as p(a) or mary[age -> 30]";

std::string text_of(const zarel::TERMT& term) {
  zarel::Text text;
  zarel::append_text(text, term);
  return text.str();
}

// Reads the text as the body of a constraint in a program of its own, which has the declarations of
// the one that is asked about.
class QuestionReader : public zarel::StatementObserver {
 public:
  QuestionReader(std::string_view text, std::string_view name, zarel::Program& program,
                 const CommandLine& line, std::ostream& messages)
      : asked_(program),
        name_(name),
        program_({.links_templates = line.links_templates, .skips_faulty_statements = true},
                 [this](const zarel::Diagnostic& finding) { take(finding); }),
        texts_(program_.files()),
        reporter_(line.messages, texts_, messages) {
    written_ = trimmed(text);
    while (!written_.empty() && (written_.ends_with('\n') || written_.ends_with('\r')))
      written_ = trimmed(std::string_view(written_).substr(0, written_.size() - 1));
    if (written_.ends_with('.')) written_.pop_back();
    statement_ = ":-\n" + written_ + "\n.\n";
  }

  std::optional<AtomQuestion> read();

 private:
  void take(const zarel::Diagnostic& finding);
  void report(Message message);
  void refuse(std::string text, const zarel::Place& place = {});
  bool is_atom(const WrittenNode& node) const;
  std::string invocation(const WrittenStatement& statement, const WrittenNode& node);
  void read_row(AtomQuestion& question);
  void statement(const WrittenStatement& statement) override;
  void flat_fact(const zarel::WrittenFlatFact& /*fact*/) override { ++statements_; }
  std::string body();

  zarel::Program& asked_;
  const std::string name_;
  std::string declarations_;
  std::string written_;
  std::string statement_;    // with the text in the second line
  zarel::Program program_;
  SourceTexts texts_;
  Reporter reporter_;
  SyntaxMessages syntax_{texts_};
  std::optional<std::uint32_t> shown_;    // the text alone, as a file of messages
  bool is_declaring_ = false;
  std::size_t statements_ = 0;
  bool is_negated_ = false;
  bool is_refused_ = false;
  std::optional<std::string> invocation_;
};

void QuestionReader::report(Message message) {
  if (!shown_) {
    shown_ = program_.run().files.add(name_, {}, written_);
  }
  const auto last_line = static_cast<std::uint32_t>(std::ranges::count(written_, '\n') + 1);
  const auto moved = [&](zarel::Place& place) {
    for (zarel::Position* const each : {&place.first, &place.last}) {
      if (!place.is_known() && each == &place.first) return;
      each->file = *shown_;
      const std::uint32_t line = each->line < 2 ? 1 : each->line - 1;
      if (line > last_line || each->line < 2) {
        // The question's end, for the full stop behind it is not the user's.
        const std::size_t begin = written_.rfind('\n') + 1;
        each->line = last_line;
        each->column = static_cast<std::uint32_t>(written_.size() - begin + 1);
        each->character = each->column;
      } else {
        each->line = line;
      }
    }
  };
  moved(message.place);
  for (zarel::Note& note : message.notes) moved(note.place);
  message.fixes.clear();
  is_refused_ = true;
  reporter_.report(message);
}

void QuestionReader::refuse(std::string text, const zarel::Place& place) {
  if (is_refused_) return;
  Message message{kCode, place, std::move(text)};
  message.help = kHelp;
  report(std::move(message));
}

void QuestionReader::take(const zarel::Diagnostic& finding) {
  if (is_declaring_) return;    // was told of the program itself
  if (!SyntaxMessages::is_about(finding.code)) return report(program_message(finding, texts_));
  if (auto message = syntax_.message(finding)) report(std::move(*message));
}

bool QuestionReader::is_atom(const WrittenNode& node) const {
  switch (node.kind) {
    case WrittenKind::kAtom:
    case WrittenKind::kFrame:
    case WrittenKind::kMembership:
    case WrittenKind::kSubclass:
    case WrittenKind::kInvocation:
      return true;
    default:
      return false;
  }
}

void QuestionReader::statement(const WrittenStatement& statement) {
  if (is_declaring_) return;
  ++statements_;
  if (statement.kind != WrittenStatement::Kind::kConstraint) return;
  const auto place_of = [&](const WrittenNode& node) {
    return program_.files().place(zarel::SourceSpan{statement.span.file, node.place});
  };
  const WrittenStatement::List body = statement.body();
  if (body.size() != 1)
    return refuse("there is more than one atom", place_of(*std::next(body.begin())));
  const WrittenNode& node = body.front();
  is_negated_ = node.is_negated;
  if (!is_atom(node)) return refuse("this is no atom", place_of(node));
  if (node.kind == WrittenKind::kInvocation) invocation_ = invocation(statement, node);
}

// As the program's own clauses have it. Nothing when no use of the template there is like this one.
std::string QuestionReader::invocation(const WrittenStatement& statement, const WrittenNode& node) {
  const zarel::NameTable& names = program_.run().names;
  std::vector<std::string> outputs;
  std::vector<std::vector<std::string>> actuals;
  std::vector<std::string> predicates;
  const auto term_text = [&](const WrittenNode& term) -> std::string {
    switch (term.kind) {
      case WrittenKind::kAsterisk:
        return "*";
      case WrittenKind::kDollar:
        return "$";
      case WrittenKind::kInteger:
        return std::to_string(term.value);
      case WrittenKind::kAnonymous:
        return "_";
      case WrittenKind::kQualified: {
        const zarel::Run::Scope scope(program_.run());
        return zarel::returnAddress(names.spelling(term.name), names.spelling(term.second_name))
            .value_or("_");
      }
      default:
        return std::string(names.spelling(term.name));
    }
  };
  std::string pattern(names.spelling(node.name));
  for (const WrittenNode& child : statement.children(node)) {
    if (child.kind != WrittenKind::kActual) {
      outputs.push_back(term_text(child));
      continue;
    }
    predicates.push_back(child.is_strongly_negated ? "-" : "");
    predicates.back() += names.spelling(child.name);
    std::vector<std::string>& parameters = actuals.emplace_back();
    for (const WrittenNode& parameter : statement.children(child)) {
      parameters.push_back(term_text(parameter));
    }
  }
  const auto& known = [this]() -> const zarel::GeneratedPredicates& {
    const zarel::Run::Scope scope(asked_.run());
    return zarel::generated_predicates();
  }();
  const auto is_marker = [](const std::string& text) { return text == "*" || text == "$"; };
  for (std::uint32_t i = 0; i < known.expansions().size(); ++i) {
    const zarel::MadeExpansion& made = known.expansions()[i];
    if (made.template_name != pattern || made.actuals.size() != actuals.size()) continue;
    std::vector<std::string> arguments;
    bool is_like = true;
    for (std::size_t a = 0; a < actuals.size() && is_like; ++a) {
      const zarel::MadeExpansion::Actual& actual = made.actuals[a];
      const zarel::GeneratedPredicate* const local = known.find(actual.predicate);
      std::string name = actual.is_strongly_negated ? "-" : "";
      name += local != nullptr && !local->name.empty() ? local->name : actual.predicate;
      is_like = name == predicates[a] && actual.parameters.size() == actuals[a].size();
      for (std::size_t p = 0; is_like && p < actuals[a].size(); ++p) {
        const std::string& parameter = actuals[a][p];
        if (is_marker(parameter) || is_marker(actual.parameters[p])) {
          is_like = parameter == actual.parameters[p];
        } else {
          arguments.push_back(parameter);
        }
      }
    }
    if (!is_like) continue;
    arguments.insert(arguments.end(), outputs.begin(), outputs.end());
    std::string text = known.result_of(i);
    const char* separator = "(";
    for (const std::string& argument : arguments) {
      (text += separator) += argument;
      separator = ",";
    }
    return arguments.empty() ? text : text += ')';
  }
  refuse("the program does not use the template " + pattern + " like this");
  return {};
}

std::string QuestionReader::body() {
  if (invocation_) return *invocation_;
  const zarel::Run::Scope scope(program_.run());
  zarel::Text text;
  bool is_first = true;
  for (const zarel::Literal& literal : program_.run().clauses.back().body()) {
    if (!is_first) text += ", ";
    is_first = false;
    zarel::append_text(text, literal.atom);
  }
  return text.str();
}

// "?" and "?(v, w)": the row is read as the arguments of an atom.
void QuestionReader::read_row(AtomQuestion& question) {
  question.is_row = true;
  const zarel::Run::Scope scope(program_.run());
  const auto terms = program_.run().clauses.back().body().front().atom.terms();
  for (std::size_t i = 2; i < terms.size(); ++i) question.row.push_back(text_of(terms[i]));
}

std::optional<AtomQuestion> QuestionReader::read() {
  AtomQuestion question;
  question.written = on_one_line(written_);
  const bool is_row = written_.starts_with('?');
  if (written_ == "?") {
    question.is_row = true;
    return question;
  }
  if (written_.empty()) {
    refuse("there is no atom");
    return std::nullopt;
  }
  // Whoever forgets the atom names a file in its place.
  std::error_code unreadable;
  if (std::filesystem::is_regular_file(written_, unreadable)) {
    refuse("this is a file, and the atom is missing");
    return std::nullopt;
  }
  if (is_row) statement_ = ":-\nr" + written_.substr(1) + "\n.\n";
  if (!is_row && written_.ends_with('?')) {
    written_.pop_back();
    statement_ = ":-\n" + written_ + "\n.\n";
  }
  is_declaring_ = true;
  for (const auto& [prefix, address] : asked_.run().namespaces.pairs()) {
    (((declarations_ += "#namespace(") += prefix) += ", ") += address + ")\n";
  }
  program_.read_text(declarations_, "declarations");
  is_declaring_ = false;
  program_.run().statement_observer = this;
  program_.read_text(statement_, name_);
  if (is_refused_) return std::nullopt;
  if (statements_ != 1 || program_.run().clauses.empty()) {
    refuse("there is more than one atom");
    return std::nullopt;
  }
  question.is_negated = is_negated_;
  if (is_row) {
    read_row(question);
    return question;
  }
  if (is_negated_ && program_.run().clauses.size() != 1) {
    refuse("\"not\" stands in front of several statements");
    return std::nullopt;
  }
  question.body = body();
  return question;
}

}    // namespace

std::optional<AtomQuestion> read_question(std::string_view text, std::string_view name,
                                          zarel::Program& program, const CommandLine& line,
                                          std::ostream& messages) {
  return QuestionReader(text, name, program, line, messages).read();
}

namespace {

// See AskedAtoms::is_one_atom().
bool asks_for_one_atom(const dl::StoredStatement& statement, const dl::Binding& binding) {
  std::size_t atoms = 0;
  std::set<dl::VariableId> open;
  for (const dl::StoredLiteral& literal : statement.body) {
    if (literal.kind == dl::kFunctionTerm) {
      const auto has_value = [&](dl::VariableId each) { return binding[each] != dl::kNoTerm; };
      if (!std::ranges::all_of(literal.variables, has_value)) return false;
      continue;
    }
    ++atoms;
    for (const dl::PatternNumber pattern : literal.atom.arguments) {
      const dl::TermPattern& term = statement.terms[pattern];
      if (term.kind == dl::TermPattern::Kind::kCompound) return false;
      const bool is_open =
          term.kind == dl::TermPattern::Kind::kVariable && binding[term.variable] == dl::kNoTerm;
      if (is_open && !open.insert(term.variable).second) return false;
    }
  }
  return atoms == 1;
}

}    // namespace

AskedAtoms::AskedAtoms(const AtomQuestion& question, dl::ExplainedAnswer& answer)
    : answer_(answer), is_negated_(question.is_negated), body_(question.body) {
  const std::string text = ":- " + question.body + ".\n";
  const dl::Source source{"question", text};
  program_ = dl::survey_texts({&source, 1});
  store_ = std::make_unique<dl::StatementStore>(program_, answer.options().bound, answer.terms(),
                                                answer.index());
  const dl::StoredStatement& statement = store_->statement(0);
  is_ground_ = true;
  dl::BodyEvaluator evaluator(answer_.terms(), answer_.index(), *store_);
  // Function terms give their variables values, if nothing in them is open.
  dl::Binding binding(statement.variables.size(), dl::kNoTerm);
  std::vector<char> is_left_out;
  for (const dl::StoredLiteral& literal : statement.body) {
    is_left_out.push_back(literal.kind == dl::kFunctionTerm ? 0 : 1);
  }
  evaluator.each(statement, binding, is_left_out, [&binding](const dl::Binding& found) {
    binding = found;
    return false;
  });
  for (const dl::StoredLiteral& literal : statement.body) {
    if (literal.kind != dl::kAtom) continue;
    Atom& atom = atoms_.emplace_back();
    atom.predicate = literal.atom.predicate;
    for (const dl::PatternNumber pattern : literal.atom.arguments) {
      atom.arguments.push_back(evaluator.value(statement, pattern, binding));
      is_ground_ = is_ground_ && atom.arguments.back() != dl::kNoTerm;
    }
  }
  is_one_atom_ = asks_for_one_atom(statement, binding);
}

std::vector<std::string> AskedAtoms::demands() const {
  if (!is_ground_) return {"0<#count{1 : " + body_ + '}'};
  std::vector<std::string> demands;
  for (const Atom& atom : atoms_) {
    std::string& text = demands.emplace_back(is_negated_ ? "not " : "");
    answer_.index().append(text, atom.predicate, atom.arguments);
  }
  return demands;
}

AskedAtoms::Held AskedAtoms::held(std::uint64_t most) {
  Held held;
  std::set<dl::AtomNumber> seen;
  const dl::StoredStatement& statement = store_->statement(0);
  dl::BodyEvaluator evaluator(answer_.terms(), answer_.index(), *store_);
  const dl::Binding start(statement.variables.size(), dl::kNoTerm);
  evaluator.each(statement, start, {}, [&](const dl::Binding& binding) {
    // What "_" stands for makes instances, too.
    for (const dl::StoredLiteral& literal : statement.body) {
      if (literal.kind != dl::kAtom) continue;
      const auto atoms = evaluator.atoms_of(statement, literal.atom, binding,
                                            statement.body.size() == 1 ? SIZE_MAX : 1);
      if (statement.body.size() == 1) held.instances += atoms.size() - 1;
      for (const dl::AtomNumber atom : atoms) {
        const bool is_wanted = held.instances < most || seen.size() < most;
        if (is_wanted && seen.insert(atom).second) held.atoms.push_back(atom);
      }
    }
    ++held.instances;
    return true;
  });
  return held;
}

}    // namespace workbench
