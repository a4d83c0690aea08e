#include "workbench/search/solver_message.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <csignal>
#include <cstring>
#include <optional>

#include "dl/clingo_run.h"
#include "model/run.h"
#include "parser/written_clause.h"
#include "workbench/messages/findings.h"
#include "workbench/messages/words.h"

namespace workbench {
namespace {

using zarel::Code;

constexpr std::string_view kBoundHelp =
    "bound the integers: write #maxint=N. or call zrl with --maxint=N";

std::string in_front(std::string_view text, std::string_view rest) {
  return std::string(text).append(rest);
}

void tell_of_variable(Message& message, const std::string& name, bool is_written) {
  message.code = "unsafe-variable";
  if (name == "_") {
    message.text = "the _ here has no value";
    message.label = "no literal of the body gives it one";
    message.help = "write a variable that the body gives a value, or a constant";
  } else if (!is_written) {
    message.text = "a variable of this rule has no value";
    message.help = "every variable has to occur in a positive literal of the body";
  } else {
    message.text = in_front("the variable ", name) + " has no value";
    message.label = name + " occurs in no positive literal of the body";
    message.help = in_front("add a literal that gives ", name) + " a value";
  }
}

void tell_of_bound(Message& message, const std::string& name, bool is_written) {
  if (name.starts_with('#')) {
    message.text = name + " needs a bound on the integers, and there is none";
  } else if (is_written) {
    message.text =
        in_front("the variable ", name) + " ranges over the integers, and these have no bound";
    message.label = name + " gets no value from a literal";
  } else {
    message.text = "this ranges over the integers, and these have no bound";
  }
  message.help = kBoundHelp;
}

// What is unexpected is a word of the solver's language, which the user has written, or has not.
void tell_of_syntax(Message& message, std::string_view text, bool is_own_text) {
  if (!is_own_text) {
    message.text = "the solver has no form for this statement";
    return;
  }
  const std::size_t comma = std::min(text.find(", "), text.size());
  message.text = "not in the solver's language";
  if (comma < text.size()) (message.text += ": ") += text.substr(comma + 2);
  message.label = "this text goes to the solver as it is";
}

// Codes whose established text would not tell a user of zrl what to do.
struct Wording {
  Code code;
  std::string_view text;    // empty: the established one
  std::string_view help;
};

constexpr std::array kWordings = std::to_array<Wording>({
    {Code::kIntegerOverflow, "an integer of this rule leaves 32 bits", kBoundHelp},
    {Code::kSumOverflow, "the values of an aggregate can add up to 2147483647 or more",
     "add up smaller numbers, or fewer of them"},
    {Code::kMeasureNoInteger, "a weight or level is no integer in an answer set",
     "let the body give it integers only"},
    {Code::kTangledProducts, "too many products with an unknown factor depend on each other",
     kBoundHelp},
    {Code::kSolverWeights, "the weights of the weak constraints leave 32 bits",
     "use smaller weights"},
    {Code::kCostOverflow, "the costs of an answer set leave 64 bits", "use smaller weights"},
    {Code::kSecondBound, "", "leave one of them out"},
    {Code::kSecondQuery, "a second query", "leave one of them out: a program has one query"},
    {Code::kIntegerRange, "", "integers go up to 2147483647"},
    {Code::kUnexpectedCharacter, "this character means nothing to the solver", ""},
    {Code::kUnclosedString, "a string without a closing quote", ""},
    {Code::kUnknownWord, "", "the words with # are in docs/dl.md"},
    {Code::kNestedAggregate, "", "give the inner aggregate a rule of its own"},
    {Code::kMissingGuard, "", "write a term on the other side of the comparison"},
});

void tell_in_general(Message& message, const zarel::Diagnostic& finding) {
  message.text = finding.text;
  const auto* const row = std::ranges::find(kWordings, finding.code, &Wording::code);
  if (row == kWordings.end()) return;
  if (!row->text.empty()) message.text = row->text;
  message.help = row->help;
}

std::string_view taken_line(std::string_view& rest) {
  const std::size_t end = std::min(rest.find('\n'), rest.size());
  const std::string_view line = rest.substr(0, end);
  rest.remove_prefix(std::min(end + 1, rest.size()));
  return line;
}

// "-:12:3-4: error: text": the line and the text behind the kind.
struct ClingoLine {
  std::size_t line = 0;
  std::string_view text;
};

std::optional<ClingoLine> read_clingo_line(std::string_view line, std::string_view kind) {
  const std::size_t found = line.find(kind);
  if (!line.starts_with("-:") || found == std::string_view::npos) return std::nullopt;
  ClingoLine result{0, trimmed(line.substr(found + kind.size()))};
  std::from_chars(line.data() + 2, line.data() + line.size(), result.line);
  return result;
}

// "'X' is unsafe"
std::optional<std::string_view> unsafe_name(std::string_view note) {
  if (!note.starts_with('\'') || !note.ends_with("' is unsafe")) return std::nullopt;
  return note.substr(1, note.rfind('\'') - 1);
}

constexpr std::string_view kInstallHelp =
    "install clingo (Debian has it in the package gringo), or name it with --clingo=PATH";

// What a solver said last is why it ended, as a rule.
std::string first_said(std::string_view said) {
  while (!said.empty()) {
    const std::string_view line = trimmed(taken_line(said));
    if (!line.empty()) return std::string(line.substr(0, 300));
  }
  return {};
}

}    // namespace

SolverMessages::Written SolverMessages::included(const zarel::Place& place) {
  const std::uint32_t number = place.first.file;
  const auto found = files_.find(number);
  const std::string& name = sources_.name(number);
  const std::uint32_t file = found != files_.end() ? found->second : run_.files.add(name, name);
  files_.emplace(number, file);
  Written result{place, place, false, true, {}};
  for (zarel::Place* const each : {&result.statement, &result.word}) {
    each->first.file = each->last.file = file;
  }
  return result;
}

// A line of the rewritten program is a whole clause, so where in it the fault is says nothing; but
// verbatim text is as the user wrote it.
SolverMessages::Written SolverMessages::written(const zarel::Place& place, std::string_view word) {
  if (!place.is_known()) return {};
  if (place.first.file != 0) return included(place);
  const zarel::LineOrigin origin = origin_of_line_(place.first.line);
  if (!origin.place.is_known()) return {};
  Written result{origin.place, {}, false, origin.is_verbatim, {}};
  if (origin.is_verbatim) {
    const zarel::Position& begin = origin.place.first;
    const auto moved = [&begin, &place](zarel::Position position) {
      position.file = begin.file;
      if (position.line == place.first.line) {    // which may begin behind a mark
        position.column += begin.column - 1;
        position.character += begin.character - 1;
      }
      position.line += begin.line - place.first.line;
      return position;
    };
    result.statement = result.word = {moved(place.first), moved(place.last)};
    return result;
  }
  const zarel::Run::Scope scope(run_);
  const zarel::Position& first = origin.place.first;
  const zarel::WrittenClause clause =
      zarel::written_clause({first.line, first.column, first.file}, word);
  result.statement = run_.files.place(clause.clause);
  if (clause.word) result.word = run_.files.place(*clause.word);
  for (const zarel::OriginStep& step : origin.steps) {
    if (step.kind == zarel::OriginKind::kRange) result.is_range = true;
    if (step.template_name.empty() || !step.invocation.is_known()) continue;
    result.uses.push_back(
        {step.invocation, "expanded for this use of the template " + step.template_name});
  }
  return result;
}

Message SolverMessages::message(const zarel::Diagnostic& finding) {
  const Written where = written(finding.place, finding.detail);
  const bool is_written = where.word.is_known();
  Message message{zarel::kind_of(finding.code).name, is_written ? where.word : where.statement, {}};
  if (finding.code == Code::kUnsafeRule) {
    tell_of_variable(message, finding.detail, is_written);
  } else if (finding.code == Code::kMissingBound) {
    tell_of_bound(message, where.is_range ? std::string() : finding.detail, is_written);
  } else if (finding.code == Code::kUnreadableFile) {
    message = unreadable_file(message.place, finding.detail);
  } else if (finding.code == Code::kSyntaxError) {
    tell_of_syntax(message, finding.text, where.is_own_text);
  } else {
    tell_in_general(message, finding);
  }
  message.notes = where.uses;
  for (const zarel::Note& note : finding.notes) {
    message.notes.push_back({written(note.place, {}).statement, note.text});
  }
  return message;
}

std::vector<zarel::Diagnostic> clingo_errors(std::string_view said,
                                             const dl::Translated& translated) {
  std::vector<zarel::Diagnostic> errors;
  const auto place_of = [&translated](std::size_t line) {
    return translated.sources.place(translated.lines.source_of(line).location);
  };
  while (!said.empty()) {
    const std::string_view line = taken_line(said);
    if (const std::optional<ClingoLine> error = read_clingo_line(line, ": error: ")) {
      errors.push_back({Code::kSolverError, place_of(error->line),
                        std::string("clingo says: ").append(error->text)});
    } else if (const std::optional<ClingoLine> note = read_clingo_line(line, ": note: ")) {
      const std::optional<std::string_view> name = unsafe_name(note->text);
      if (!name || errors.empty()) continue;
      // The first variable of a rule is enough: the others are seen once it is mended.
      if (errors.back().code == Code::kUnsafeRule) continue;
      errors.back().code = Code::kUnsafeRule;
      errors.back().detail = *name;
    }
  }
  return errors;
}

Message solver_failure(const std::string& solver, const dl::ProcessEnd& end) {
  std::string said = first_said(end.errors);
  if (end.signalled) {
    Message message{"solver-killed", {}, solver + " died of signal "};
    (((message.text += std::to_string(end.code)) += " (") += ::strsignal(end.code)) += ')';
    if (end.code == SIGKILL) message.help = "the system may have had no more memory for it";
    if (end.code == SIGSEGV) {    // a stack that was not enough is the usual reason
      message.help = "function terms may be nested too deep for it: ten thousand levels are safe";
    }
    return message;
  }
  if (end.code == dl::kCannotRun) {
    Message message{"solver-missing", {}, "cannot run " + solver + ": " + said};
    message.help = kInstallHelp;
    return message;
  }
  if (end.code == dl::kOutOfMemory) {
    Message message{"solver-memory", {}, solver + " ran out of memory"};
    message.help = "make the program's rules give fewer instances";
    return message;
  }
  constexpr std::string_view kLoud = "*** ERROR: (clingo): ";
  if (said.starts_with(kLoud)) said.erase(0, kLoud.size());
  Message message{"solver-incomplete",
                  {},
                  solver + " ended without a complete answer (status " + std::to_string(end.code)};
  message.text += ')';
  if (!said.empty()) (message.text += ", and said: ") += said;
  return message;
}

// What clingo finds wrong with a statement is the program's fault, anything else is its own.
ExitStatus status_of(const Message& message) {
  constexpr std::array<std::string_view, 10> kOfSolvers{
      "process-failure",    "solver-missing",    "solver-killed", "solver-memory",
      "solver-interrupted", "solver-incomplete", "cost-mismatch", "solver-error",
      "graphviz-missing",   "graphviz-failure"};
  if (message.code == "output-failure") return ExitStatus::kOutputFailed;
  constexpr std::array<std::string_view, 3> kOfUsage{"unreadable-file", "form-misfit",
                                                     "job-folder"};
  if (std::ranges::find(kOfUsage, message.code) != kOfUsage.end()) return ExitStatus::kUsage;
  const bool is_of_solver =
      !message.place.is_known() && std::ranges::find(kOfSolvers, message.code) != kOfSolvers.end();
  return is_of_solver ? ExitStatus::kSolverFailed : ExitStatus::kProgramErrors;
}

}    // namespace workbench
