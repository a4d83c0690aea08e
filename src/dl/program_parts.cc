#include "dl/program_parts.h"

#include "dl/failure.h"

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

std::string ProgramParts::at(Place place, std::string_view message) const {
  return at_place(files[place.file], place.line, message);
}

std::string ProgramParts::message(const Fault& fault) const {
  switch (fault.kind) {
    case FaultKind::kSum:
      return at(fault.place, "the values of an aggregate can add up to 2147483647 or more");
    case FaultKind::kMeasure:
      return at(fault.place, "a weight or level is not an integer");
    default:
      return at(fault.place, "an integer leaves 32 bits; #maxint or -N= bounds it");
  }
}

}    // namespace dl
