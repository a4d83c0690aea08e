#include "parser/fact_builder.h"

#include <limits>

namespace zarel {

FactBuilder::FactBuilder(ProgramBuilder& builder, std::uint32_t file)
    : builder_(builder), file_(file), scope_(Work{{file, place_}, OriginId::kWritten, nullptr}) {
  builder_.start_file();
  builder_.follow(place_);
}

std::int64_t FactBuilder::greatest_integer() const {
  const std::int64_t bound = builder_.terms().bounds().MaxInteger();
  return bound < 0 ? std::numeric_limits<std::int32_t>::max() : bound;
}

void FactBuilder::fact(NameId name, std::span<const TERMT> terms, NameId frame_space,
                       const SourceSpan& declared) {
  TermBuilder& builder = builder_.terms();
  TermsMark list = builder.empty_list();
  for (const TERMT& term : terms) {
    const bool is_integer = term.kind == TermKind::kInteger;
    list = builder.next(list, is_integer ? builder.bounds().integer(term.index()) : term);
  }
  builder_.clauses().row_fact(name, list, space(frame_space), declared);
  builder_.end_statement();
}

TERMT FactBuilder::term(const TERMT& term) {
  TermBuilder& builder = builder_.terms();
  return term.kind == TermKind::kInteger ? builder.integer({term.index(), 0})
                                         : builder.constant(NameId{term.index()});
}

FrameTerm FactBuilder::subject(const TERMT& object) {
  if (object.kind == TermKind::kConstant) return builder_.frames().name(NameId{object.index()});
  return builder_.frames().term(term(object));
}

// "default", which is the current one, is not named.
NameId FactBuilder::space(NameId name) {
  FrameSpaces& spaces = builder_.frame_spaces();
  return name == spaces.currentDefaultNs() ? spaces.current() : spaces.named(name);
}

void FactBuilder::frame(FRAME frame, NameId frame_space) {
  frame = builder_.frames().in_space(frame, {space(frame_space), &place_});
  builder_.clauses().head_frame(frame);
  builder_.clauses().fact();
  builder_.end_statement();
}

void FactBuilder::member(const TERMT& object, NameId of_class, NameId frame_space) {
  FrameBuilder& frames = builder_.frames();
  const FrameTerm member = subject(object);
  frame(frames.membership(Membership{member, frames.name(of_class)}), frame_space);
}

void FactBuilder::object(const TERMT& object, std::span<const Attribute> attributes,
                         NameId frame_space) {
  FrameBuilder& frames = builder_.frames();
  const FrameTerm described = subject(object);
  AttributesMark list = frames.attributes().empty_list();
  for (const Attribute& attribute : attributes) {
    const ATTRIBUTE label = frames.label(frames.name(attribute.name));
    const FRAME value = frames.value_of(term(attribute.value));
    list = frames.attributes().next(list, frames.with_value(label, attribute.arrow, value));
  }
  frame(frames.molecule(described, list), frame_space);
}

}    // namespace zarel
