#include "frames/frame_translation.h"

#include <string>

#include "frames/frame_encoding.h"
#include "frames/frame_source.h"
#include "frames/frame_walk.h"
#include "model/names.h"
#include "model/program.h"

namespace zarel {
namespace {

using Type = PREDICATE_NAMETS::TYPE;

void add_rule(const ATOMT& head, const Body& body) {
  CLAUSES().emplace_back(rule_of(head, body), frame_source());
}

ATOMT auxiliary_atom(const char* stem, std::uint32_t number, const std::vector<TERMT>& variables) {
  return {stem + std::to_string(number), variables, Type::kIdb};
}

void add_variables(std::vector<TERMT>& out, const FrameTerm& term) {
  const std::span<const TERMT> variables = term.variables.elements();
  out.insert(out.end(), variables.begin(), variables.end());
}

Body body_of(const std::vector<Literal>& literals) {
  Body body;
  for (const Literal& literal : literals) body.add(literal);
  return body;
}

// Collects literals along the walk. A negated attribute with values opens a list of its own, which
// becomes the body of its auxiliary rule when the attribute is left. So are the variables
// collected, once for all attributes around them.
class CollectLiterals {
 public:
  CollectLiterals(NameId framespace, const FrameContext& context)
      : framespace_(framespace), context_(context) {
    constexpr std::size_t kUsual = 8;    // statements
    lists_.front().literals.reserve(kUsual);
  }

  void enter_attribute(const FRAME& frame, const ATTRIBUTE& attribute) {
    if (attribute.isSimple()) {
      add(frame, attribute, attribute.is_negated, std::nullopt);
    } else if (attribute.is_negated) {
      lists_.push_back({ATTRIBUTE::nextAuxAtom()++, variables_.size(), {}});
    }
    add_variables(variables_, attribute.name);
  }

  void value(const FRAME& frame, const ATTRIBUTE& attribute, const FRAME& value) {
    add(frame, attribute, false, value.subject().text);
    add_variables(variables_, value.subject());
  }

  void leave_attribute(const FRAME& frame, const ATTRIBUTE& attribute) {
    if (attribute.isSimple() || !attribute.is_negated) return;
    const OpenList closed = std::move(lists_.back());
    lists_.pop_back();
    std::vector<TERMT> variables;
    add_variables(variables, frame.subject());
    variables.insert(variables.end(),
                     variables_.begin() + static_cast<std::ptrdiff_t>(closed.first_variable),
                     variables_.end());
    const ATOMT auxiliary = auxiliary_atom("aaa", closed.number, variables);
    add_rule(auxiliary, body_of(closed.literals));
    lists_.back().literals.push_back({auxiliary, true});
  }

  std::vector<Literal> literals() && { return std::move(lists_.front().literals); }

 private:
  struct OpenList {
    std::uint32_t number;          // of its auxiliary atom
    std::size_t first_variable;    // in variables_
    std::vector<Literal> literals;
  };

  void add(const FRAME& frame, const ATTRIBUTE& attribute, bool is_negated,
           std::optional<NameId> value) {
    const FrameStatement statement{is_negated, frame.subject().text, attribute.name.text,
                                   value,      attribute.arrow,      framespace_};
    lists_.back().literals.push_back(encoded(statement, context_));
  }

  NameId framespace_;
  const FrameContext& context_;
  std::vector<OpenList> lists_{OpenList{}};
  std::vector<TERMT> variables_;    // of all attributes and values so far
};

std::vector<TERMT> variables_of(const FRAME& frame) {
  std::vector<TERMT> variables;
  frame.getVariables(variables);
  return variables;
}

}    // namespace

Literal encoded(const FrameStatement& statement, const FrameContext& context) {
  if (context.is_in_template) return relationToTemplateLiteral(statement);
  if (context.is_higher_order) return relationToHigherOrder(statement);
  const Literal literal = relationToLITERALT(statement);
  addedAtom(without_minus(literal.atom.name()));
  return literal;
}

std::vector<Literal> toLiterals(const FRAME& frame, const FrameContext& context) {
  CollectLiterals collected(frame.getFramespace(), context);
  walk_frame(frame, collected);
  return std::move(collected).literals();
}

std::vector<Literal> standardize(const FRAME& frame, FramePosition position,
                                 const FrameContext& context) {
  if (position == FramePosition::kHead) {
    if (frame.isAtomic()) return toLiterals(frame, context);
    return {{newHeadAuxAtom(frame, context), false}};
  }
  if (frame.is_negated()) return {{newNegationAuxAtom(frame, context), true}};
  return toLiterals(frame, context);
}

ATOMT newHeadAuxAtom(const FRAME& frame, const FrameContext& context) {
  const ATOMT auxiliary = auxiliary_atom("faa", FRAME::nextAuxAtom()++, variables_of(frame));
  Body body;
  body.add({auxiliary, false});
  for (const Literal& literal : toLiterals(frame, context)) add_rule(literal.atom, body);
  return auxiliary;
}

ATOMT newNegationAuxAtom(const FRAME& frame, const FrameContext& context) {
  const ATOMT auxiliary = auxiliary_atom("faa", FRAME::nextAuxAtom()++, variables_of(frame));
  add_rule(auxiliary, body_of(toLiterals(frame, context)));
  return auxiliary;
}

}    // namespace zarel
