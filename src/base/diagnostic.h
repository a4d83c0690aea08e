#pragma once
// diagnostic.h - what is wrong with an input, as a value: messages are made of it, not the other
// way round.

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/place.h"

namespace zarel {

enum class Severity { kError, kWarning };

// How the established command line shows a finding.
enum class Shown {
  kWithLine,        // as yyerror: the place that the scanner had reached, the text, a full stop
  kWithLastLine,    // the same, with that place also when all was read
  kAlone,           // its text as a line, on standard error
  kAsOutput,        // its text on standard output
  kNever,           // the run ends without a word, or goes on
};

// Every kind of finding. Its row in the table of kinds says the rest.
enum class Code : std::uint8_t {
  // Reading the input.
  kUnreadableFile,
  kReadFailure,
  kSyntaxError,
  kInputTooDeep,
  kUnknownCharacter,
  kLongIdentifier,
  kUnderscoreIdentifier,
  kLongNumber,
  kUnclosedVerbatim,
  kStarredComment,
  kUnknownPrefix,
  kRedefinedPrefix,
  kQuotedFunctor,
  kQuotedFrameSpace,
  kQuotedTemplateName,
  kNegationInHead,
  kNegatedValue,
  kNestedNegation,
  kWeightRange,
  kWeightPrecision,
  kMaxintExceeded,
  kMaxintUnknown,
  kMaxintRedefined,
  kMaxintNoInteger,
  kMaxintTooSmall,
  kReplacedQuery,
  // The program as a whole.
  kArityClash,
  kRoleClash,
  kMarkerClash,
  kUnsafeRule,
  // Templates.
  kTemplateRedefined,
  kTemplateUndefined,
  kFormalInHead,
  kGlobalInHead,
  kFormalArity,
  kGlobalArity,
  kOutputArity,
  kActualCount,
  kActualArity,
  kResultArity,
  kResultMissing,
  kEndlessExpansion,
  // Reading answers.
  kUnreadableAnswers,
  kAnswerSyntax,
  kAnswersTooDeep,
  kAnswerScanner,
  // The program `dl`: reading programs. Their other kinds are those of the front end.
  kUnexpectedCharacter,
  kUnclosedString,
  kUnknownWord,
  kNulByte,
  kTextTooLong,
  kIntegerRange,
  kSecondQuery,
  kSecondBound,
  kMissingBound,
  kBuiltinArity,
  kFunctorName,
  kUnsupportedNegation,
  kUnsupportedAggregate,
  kNestedAggregate,
  kMissingGuard,
  kGuardOperator,
  kTangledProducts,
  // Its search and its answers.
  kIntegerOverflow,
  kSumOverflow,
  kMeasureNoInteger,
  kCostOverflow,
  kCostMismatch,
  kNoAnswerSet,
  kSearchCut,
  kUnprovenBest,
  // Its command line and the processes.
  kUnknownOption,
  kOptionValue,
  kNoInputFile,
  kOutputFailure,
  kProcessFailure,
  kSolverMissing,
  kSolverKilled,
  kSolverMemory,
  kSolverWeights,
  kSolverError,
  kSolverInterrupted,
  kSolverIncomplete,
  kJobFolder,
};

// One kind of finding.
struct DiagnosticKind {
  Code code;
  std::string_view name;    // stable: what users and tools refer to
  Severity severity;
  Shown shown;
  bool is_counted = false;    // in parser_errors, which keep the program from being solved
};

const DiagnosticKind& kind_of(Code code);
std::span<const DiagnosticKind> all_kinds();    // in the order of the codes

// A further place that a finding is about, and what is there.
struct Note {
  Place place;
  std::string text;
};

// What a grammar knows of a text that it refused.
struct Refusal {
  Place statement;                           // from its first token to the refused one
  std::vector<std::string_view> expected;    // what could stand there, as one says it: "a comma"
  bool lacks_full_stop = false;              // reading goes on with the refused token
};

struct Diagnostic {
  Code code;
  Place place;         // not known where nothing of the input is at fault
  std::string text;    // the established text, without its full stop where yyerror adds one
  std::vector<Note> notes = {};
  std::string detail = {};                // what the established command line shows besides
  int parser_line = 0;                    // the line that it shows: the scanner's at that moment
  std::optional<Refusal> refusal = {};    // by the input grammar; never shown by that command line
};

// Takes findings in the order in which they are made.
using DiagnosticSink = std::function<void(Diagnostic)>;

// The end of a run before its time, on its way to whoever called for the run.
// Note [ends as exceptions]
// A fatal finding deep in a grammar action has to end the run at once, yet tests, fuzzers and hosts
// call the same code and live on. So the run's end travels as this exception: everything open is
// closed on the way, and main turns it into the exit status. It is caught nowhere else but where a
// whole run is called as a function.
struct RunEnd {
  int status;    // with which the established command line ends
};

}    // namespace zarel
