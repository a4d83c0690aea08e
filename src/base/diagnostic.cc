#include "base/diagnostic.h"

#include <array>

namespace zarel {
namespace {

using enum Code;

constexpr std::array kKinds = std::to_array<DiagnosticKind>({
    {kUnreadableFile, "unreadable-file", Severity::kError, Shown::kWithLine},
    {kReadFailure, "read-failure", Severity::kError, Shown::kWithLine},
    {kSyntaxError, "syntax-error", Severity::kError, Shown::kWithLine},
    {kInputTooDeep, "input-too-deep", Severity::kError, Shown::kWithLine, true},
    {kUnknownCharacter, "unknown-character", Severity::kWarning, Shown::kAsOutput},
    {kLongIdentifier, "long-identifier", Severity::kError, Shown::kWithLine, true},
    {kUnderscoreIdentifier, "underscore-identifier", Severity::kError, Shown::kWithLine, true},
    {kLongNumber, "long-number", Severity::kError, Shown::kWithLine, true},
    {kUnclosedVerbatim, "unclosed-verbatim", Severity::kWarning, Shown::kWithLine},
    {kStarredComment, "starred-comment", Severity::kWarning, Shown::kNever},
    {kUnknownPrefix, "unknown-prefix", Severity::kError, Shown::kWithLine, true},
    {kRedefinedPrefix, "redefined-prefix", Severity::kWarning, Shown::kWithLine},
    {kQuotedFunctor, "quoted-functor", Severity::kError, Shown::kWithLine, true},
    {kQuotedFrameSpace, "quoted-frame-space", Severity::kError, Shown::kWithLine, true},
    {kQuotedTemplateName, "quoted-template-name", Severity::kError, Shown::kWithLine, true},
    {kNegationInHead, "negation-in-head", Severity::kError, Shown::kWithLine, true},
    {kNegatedValue, "negated-value", Severity::kError, Shown::kWithLine, true},
    {kNestedNegation, "nested-negation", Severity::kError, Shown::kWithLine, true},
    {kWeightRange, "weight-range", Severity::kError, Shown::kWithLine, true},
    {kWeightPrecision, "weight-precision", Severity::kWarning, Shown::kWithLine},
    {kMaxintExceeded, "maxint-exceeded", Severity::kError, Shown::kWithLine, true},
    {kMaxintUnknown, "maxint-unknown", Severity::kError, Shown::kWithLine, true},
    {kMaxintRedefined, "maxint-redefined", Severity::kWarning, Shown::kWithLine},
    {kMaxintNoInteger, "maxint-no-integer", Severity::kError, Shown::kWithLine, true},
    {kMaxintTooSmall, "maxint-too-small", Severity::kError, Shown::kWithLine, true},
    {kReplacedQuery, "replaced-query", Severity::kWarning, Shown::kAsOutput},
    {kArityClash, "arity-clash", Severity::kError, Shown::kAlone},
    {kRoleClash, "role-clash", Severity::kError, Shown::kAlone},
    {kMarkerClash, "marker-clash", Severity::kError, Shown::kNever},
    {kUnsafeRule, "unsafe-rule", Severity::kError, Shown::kWithLastLine},
    {kTemplateRedefined, "template-redefined", Severity::kError, Shown::kAlone},
    {kTemplateUndefined, "template-undefined", Severity::kError, Shown::kAlone},
    {kFormalInHead, "formal-in-head", Severity::kError, Shown::kAlone},
    {kGlobalInHead, "global-in-head", Severity::kError, Shown::kAlone},
    {kFormalArity, "formal-arity", Severity::kError, Shown::kAlone},
    {kGlobalArity, "global-arity", Severity::kError, Shown::kAlone},
    {kOutputArity, "output-arity", Severity::kError, Shown::kAlone},
    {kActualCount, "actual-count", Severity::kError, Shown::kAlone},
    {kActualArity, "actual-arity", Severity::kError, Shown::kAlone},
    {kResultArity, "result-arity", Severity::kError, Shown::kAlone},
    {kResultMissing, "result-missing", Severity::kError, Shown::kAlone},
    {kEndlessExpansion, "endless-expansion", Severity::kError, Shown::kAlone},
    {kUnreadableAnswers, "unreadable-answers", Severity::kError, Shown::kWithLine},
    {kAnswerSyntax, "answer-syntax", Severity::kError, Shown::kWithLine},
    {kAnswersTooDeep, "answers-too-deep", Severity::kError, Shown::kWithLine},
    {kAnswerScanner, "answer-scanner", Severity::kError, Shown::kAlone},
    {kUnexpectedCharacter, "unexpected-character", Severity::kError, Shown::kWithLine},
    {kUnclosedString, "unclosed-string", Severity::kError, Shown::kWithLine},
    {kUnknownWord, "unknown-word", Severity::kError, Shown::kWithLine},
    {kNulByte, "nul-byte", Severity::kError, Shown::kWithLine},
    {kTextTooLong, "text-too-long", Severity::kError, Shown::kWithLine},
    {kIntegerRange, "integer-range", Severity::kError, Shown::kWithLine},
    {kSecondQuery, "second-query", Severity::kError, Shown::kWithLine},
    {kSecondBound, "second-bound", Severity::kError, Shown::kWithLine},
    {kMissingBound, "missing-bound", Severity::kError, Shown::kWithLine},
    {kBuiltinArity, "builtin-arity", Severity::kError, Shown::kWithLine},
    {kFunctorName, "functor-name", Severity::kError, Shown::kWithLine},
    {kUnsupportedNegation, "unsupported-negation", Severity::kError, Shown::kWithLine},
    {kUnsupportedAggregate, "unsupported-aggregate", Severity::kError, Shown::kWithLine},
    {kNestedAggregate, "nested-aggregate", Severity::kError, Shown::kWithLine},
    {kMissingGuard, "missing-guard", Severity::kError, Shown::kWithLine},
    {kGuardOperator, "guard-operator", Severity::kError, Shown::kWithLine},
    {kTangledProducts, "tangled-products", Severity::kError, Shown::kWithLine},
    {kIntegerOverflow, "integer-overflow", Severity::kError, Shown::kWithLine},
    {kSumOverflow, "sum-overflow", Severity::kError, Shown::kWithLine},
    {kMeasureNoInteger, "measure-no-integer", Severity::kError, Shown::kWithLine},
    {kCostOverflow, "cost-overflow", Severity::kError, Shown::kAlone},
    {kCostMismatch, "cost-mismatch", Severity::kError, Shown::kAlone},
    {kNoAnswerSet, "no-answer-set", Severity::kWarning, Shown::kWithLine},
    {kSearchCut, "search-cut", Severity::kWarning, Shown::kAlone},
    {kUnprovenBest, "unproven-best", Severity::kWarning, Shown::kAlone},
    {kUnknownOption, "unknown-option", Severity::kError, Shown::kAlone},
    {kOptionValue, "option-value", Severity::kError, Shown::kAlone},
    {kNoInputFile, "no-input-file", Severity::kError, Shown::kAlone},
    {kOutputFailure, "output-failure", Severity::kError, Shown::kAlone},
    {kProcessFailure, "process-failure", Severity::kError, Shown::kAlone},
    {kSolverMissing, "solver-missing", Severity::kError, Shown::kAlone},
    {kSolverKilled, "solver-killed", Severity::kError, Shown::kAlone},
    {kSolverMemory, "solver-memory", Severity::kError, Shown::kAlone},
    {kSolverWeights, "solver-weights", Severity::kError, Shown::kAlone},
    {kSolverError, "solver-error", Severity::kError, Shown::kWithLine},
    {kSolverInterrupted, "solver-interrupted", Severity::kError, Shown::kAlone},
    {kSolverIncomplete, "solver-incomplete", Severity::kError, Shown::kAlone},
    {kJobFolder, "job-folder", Severity::kError, Shown::kAlone},
});

constexpr bool is_in_order() {
  for (std::size_t i = 0; i < kKinds.size(); ++i) {
    if (kKinds[i].code != static_cast<Code>(i)) return false;
  }
  return true;
}
static_assert(is_in_order(), "a row for each code, in the order of the codes");

}    // namespace

const DiagnosticKind& kind_of(Code code) {
  return kKinds[static_cast<std::size_t>(code)];
}

std::span<const DiagnosticKind> all_kinds() {
  return kKinds;
}

}    // namespace zarel
