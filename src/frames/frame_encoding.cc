#include "frames/frame_encoding.h"

#include <string>
#include <vector>

#include "model/generic_encoding.h"
#include "model/names.h"
#include "model/run.h"

namespace zarel {
namespace {

using Type = PREDICATE_NAMETS::TYPE;

Literal literal_of(const FrameStatement& statement, std::string_view predicate,
                   const std::vector<TERMT>& terms) {
  return {ATOMT(predicate, terms, Type::kUnknown), statement.is_negated};
}

Literal generic_literal(const FrameStatement& statement, bool is_true_negated,
                        const std::vector<TERMT>& terms) {
  std::string predicate = is_true_negated ? "-" : "";
  predicate.append(kGenericStem).append(std::to_string(terms.size() - 1));
  return literal_of(statement, predicate, terms);
}

// The statement as an atom of the attribute itself, as if the frame had been written name(subject,
// value).
Literal plain_relation(const FrameStatement& statement) {
  std::vector<TERMT> terms = {newTERMT(without_minus(statement.name)),
                              TERMT::constant(statement.framespace), newTERMT(statement.subject)};
  if (statement.value) terms.push_back(newTERMT(*statement.value));
  return generic_literal(statement, statement.name.starts_with('-'), terms);
}

TERMT marked_space(NameId framespace) {
  std::string text(names().spelling(framespace));
  return newTERMT(text.append(kFrameMarker));
}

}    // namespace

bool OptionFramelogic() {
  return current_run().options.OptionFramelogic;
}

Literal relationToLITERALT(const FrameStatement& statement) {
  std::vector<TERMT> terms = {TERMT::constant(statement.framespace), newTERMT(statement.subject)};
  if (statement.value) terms.push_back(newTERMT(*statement.value));
  return literal_of(statement, statement.name, terms);
}

Literal relationToTemplateLiteral(const FrameStatement& statement) {
  check_template_name(statement.name);
  std::vector<TERMT> terms = {newTERMT(statement.subject), TERMT::constant(statement.framespace)};
  if (statement.value) terms.push_back(newTERMT(*statement.value));
  return literal_of(statement, getNameAtomLabeled(statement.name), terms);
}

Literal relationToHigherOrder(const FrameStatement& statement) {
  if (!OptionFramelogic() || statement.arrow == ARROW::kNegatedSignature)
    return plain_relation(statement);

  const bool is_subclass = statement.arrow == ARROW::kSubclass;
  const bool is_true_negated =
      statement.name.starts_with('-') || (!is_subclass && statement.subject.starts_with('-'));
  const std::string_view relation = is_subclass                           ? kSubClassOf
                                    : statement.arrow == ARROW::kInstance ? kInstanceOf
                                                                          : kValueOf;
  std::vector<TERMT> terms = {
      newTERMT(relation), marked_space(statement.framespace),
      newTERMT(is_subclass ? statement.subject : without_minus(statement.subject)),
      newTERMT(without_minus(statement.name))};
  if (relation == kValueOf && statement.value) {
    terms.push_back(newTERMT(*statement.value));
    terms.push_back(newTERMT(arrows[static_cast<std::size_t>(statement.arrow)]));
  }
  return generic_literal(statement, is_true_negated, terms);
}

}    // namespace zarel
