#include "frames/frame_encoding.h"

#include <array>
#include <span>
#include <string>

#include "model/generic_encoding.h"
#include "model/names.h"
#include "model/run.h"

namespace zarel {
namespace {

using Type = PREDICATE_NAMETS::TYPE;

// The names that all statements share, looked up once for a run.
struct SharedNames {
  SharedNames() {
    for (std::size_t i = 0; i < kArrowCount; ++i) quoted_arrows[i] = names().intern(arrows[i]);
  }

  NameId value_of = names().intern(kValueOf);
  NameId instance_of = names().intern(kInstanceOf);
  NameId sub_class_of = names().intern(kSubClassOf);
  std::array<NameId, kArrowCount> quoted_arrows;
  std::optional<NameId> space;    // the frame space that was met last, and its marked name
  NameId marked_space;
};

SharedNames& shared_names() {
  return current_run().parts.get<SharedNames>();
}

// The terms of one statement, six at most.
class Terms {
 public:
  void add(const TERMT& term) { terms_[size_++] = term; }
  void add(NameId text) { add(newTERMT(text)); }
  std::size_t size() const { return size_; }
  std::span<const TERMT> all() const { return {terms_.data(), size_}; }

 private:
  std::array<TERMT, 6> terms_;
  std::size_t size_ = 0;
};

bool has_minus(NameId name) {
  return names().spelling(name).starts_with('-');
}

NameId less_minus(NameId name) {
  return has_minus(name) ? names().intern(without_minus(names().spelling(name))) : name;
}

Literal generic_literal(const FrameStatement& statement, bool is_true_negated, const Terms& terms) {
  const Negation negation = is_true_negated ? Negation::kStrong : Negation::kNone;
  const NameId predicate = current_run().generic_names.name(terms.size() - 1, negation);
  return {ATOMT(predicate, terms.all(), Type::kUnknown), statement.is_negated};
}

// The statement as an atom of the attribute itself, as if the frame had been written name(subject,
// value).
Literal plain_relation(const FrameStatement& statement) {
  Terms terms;
  terms.add(less_minus(statement.name));
  terms.add(TERMT::constant(statement.framespace));
  terms.add(statement.subject);
  if (statement.value) terms.add(*statement.value);
  return generic_literal(statement, has_minus(statement.name), terms);
}

NameId marked_space(SharedNames& shared, NameId framespace) {
  if (shared.space != framespace) {
    std::string text(names().spelling(framespace));
    shared.space = framespace;
    shared.marked_space = names().intern(text.append(kFrameMarker));
  }
  return shared.marked_space;
}

}    // namespace

bool OptionFramelogic() {
  return current_run().options.OptionFramelogic;
}

Literal relationToLITERALT(const FrameStatement& statement) {
  Terms terms;
  terms.add(TERMT::constant(statement.framespace));
  terms.add(statement.subject);
  if (statement.value) terms.add(*statement.value);
  return {ATOMT(statement.name, terms.all(), Type::kUnknown), statement.is_negated};
}

Literal relationToTemplateLiteral(const FrameStatement& statement) {
  const std::string_view name = names().spelling(statement.name);
  check_template_name(name);
  Terms terms;
  terms.add(statement.subject);
  terms.add(TERMT::constant(statement.framespace));
  if (statement.value) terms.add(*statement.value);
  return {ATOMT(getNameAtomLabeled(name), terms.all(), Type::kUnknown), statement.is_negated};
}

Literal relationToHigherOrder(const FrameStatement& statement) {
  if (!OptionFramelogic() || statement.arrow == ARROW::kNegatedSignature)
    return plain_relation(statement);

  SharedNames& shared = shared_names();
  const bool is_subclass = statement.arrow == ARROW::kSubclass;
  const bool is_instance = statement.arrow == ARROW::kInstance;
  const bool is_true_negated =
      has_minus(statement.name) || (!is_subclass && has_minus(statement.subject));
  Terms terms;
  terms.add(TERMT::constant(is_subclass   ? shared.sub_class_of
                            : is_instance ? shared.instance_of
                                          : shared.value_of));
  terms.add(marked_space(shared, statement.framespace));
  terms.add(is_subclass ? statement.subject : less_minus(statement.subject));
  terms.add(less_minus(statement.name));
  if (!is_subclass && !is_instance && statement.value) {
    terms.add(*statement.value);
    terms.add(TERMT::constant(shared.quoted_arrows[static_cast<std::size_t>(statement.arrow)]));
  }
  return generic_literal(statement, is_true_negated, terms);
}

}    // namespace zarel
