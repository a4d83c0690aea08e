#include "parser/integer_bounds.h"

#include <algorithm>

#include "parser/reading_scope.h"

namespace zarel {

TERMT IntegerBounds::integer(std::uint32_t value) {
  if (MaxInteger_ != kNone && value > MaxInteger_)
    report(Code::kMaxintExceeded, "number outside of given integer range");
  MaxIntegerSeen_ = std::max(MaxIntegerSeen_, std::int64_t{value});
  return TERMT::integer(static_cast<std::int32_t>(value));
}

TERMT IntegerBounds::maxint() {
  if (MaxInteger_ == kNone) {
    report(Code::kMaxintUnknown, "#maxint used but no upper integer bound (option -N) given");
    MaxInteger_ = 0;
  }
  return TERMT::integer(static_cast<std::int32_t>(MaxInteger_));
}

bool IntegerBounds::define(const TERMT& term, const SourceRange& place) {
  if (MaxInteger_ != kNone) {
    report(Code::kMaxintRedefined, "Cannot redefine #maxint. Ignoring this definition");
    return false;
  }
  const ReadingScope at_term(work(), &place);
  if (term.kind != TermKind::kInteger) {
    report(Code::kMaxintNoInteger, "parse error in #maxint statement");
    return true;
  }
  MaxInteger_ = term.value;
  if (MaxInteger_ < MaxIntegerSeen_) {
    report(Code::kMaxintTooSmall,
           "#maxint must not be less than the maximum integer occurring in the input");
  }
  return true;
}

}    // namespace zarel
