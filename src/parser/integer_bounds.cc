#include "parser/integer_bounds.h"

#include <algorithm>
#include <utility>

#include "parser/reading_scope.h"

namespace zarel {

std::vector<Note> IntegerBounds::definition(std::string text) const {
  if (!definition_) return {};
  return {{*definition_, std::move(text)}};
}

TERMT IntegerBounds::integer(std::uint32_t value) {
  if (MaxInteger_ != kNone && value > MaxInteger_) {
    report({Code::kMaxintExceeded, work_place(), "number outside of given integer range",
            definition("the bound on integers")});
  }
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
    report({Code::kMaxintRedefined, work_place(),
            "Cannot redefine #maxint. Ignoring this definition", definition("the one that holds")});
    return false;
  }
  definition_ = work_place();
  const ReadingScope at_term(work(), &place);
  if (term.kind != TermKind::kInteger) {
    report(Code::kMaxintNoInteger, "parse error in #maxint statement");
    return true;
  }
  MaxInteger_ = term.value();
  if (MaxInteger_ < MaxIntegerSeen_) {
    report(Code::kMaxintTooSmall,
           "#maxint must not be less than the maximum integer occurring in the input");
  }
  return true;
}

}    // namespace zarel
