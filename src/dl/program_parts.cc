#include "dl/program_parts.h"

namespace dl {

void Signatures::add(std::string_view name, std::uint32_t arity, bool strongly_negated) {
  // Facts of one predicate follow each other, as a rule.
  if (!all_.empty()) {
    const Signature& last = all_.back();
    if (last.arity == arity && last.strongly_negated == strongly_negated && last.name == name)
      return;
  }
  key_.clear();
  key_ += strongly_negated ? '-' : '+';
  (key_ += name) += '/';
  key_ += std::to_string(arity);
  if (!seen_.insert(key_).second) return;
  all_.push_back({std::string(name), arity, strongly_negated});
}

zarel::Diagnostic diagnostic_of(const Fault& fault, const Sources& sources) {
  struct Row {
    zarel::Code code;
    const char* text;
  };
  static constexpr Row kRows[] = {
      {zarel::Code::kIntegerOverflow, "an integer leaves 32 bits; #maxint or -N= bounds it"},
      {zarel::Code::kSumOverflow, "the values of an aggregate can add up to 2147483647 or more"},
      {zarel::Code::kMeasureNoInteger, "a weight or level is not an integer"},
  };
  const Row& row = kRows[static_cast<std::size_t>(fault.kind)];
  zarel::Diagnostic diagnostic{row.code, sources.place(fault.range), row.text};
  diagnostic.parser_line = static_cast<int>(fault.line);
  return diagnostic;
}

}    // namespace dl
