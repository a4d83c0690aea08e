#include "solver/program_parts.h"

#include "solver/failure.h"

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

}    // namespace dl
