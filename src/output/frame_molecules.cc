#include "output/frame_molecules.h"

#include <algorithm>
#include <array>

#include "model/generic_encoding.h"
#include "output/answer_terms.h"

namespace zarel {
namespace {

using Arguments = std::array<std::string_view, 4>;    // more are ignored

// The first arguments; those that are missing are empty.
Arguments split_arguments(std::string_view text) {
  Arguments pieces;
  for (std::string_view& piece : pieces) {
    piece = text.substr(0, end_of_first_term(text));
    text.remove_prefix(std::min(piece.size() + 1, text.size()));
  }
  return pieces;
}

std::string suffix_of(std::string_view space) {
  if (space == kDefaultSpace) return {};
  std::string suffix = "@";
  suffix += space;
  return suffix;
}

std::string_view without_quotes(std::string_view arrow) {
  return arrow.size() < 2 ? std::string_view() : arrow.substr(1, arrow.size() - 2);
}

}    // namespace

void printToNestedFrameSyntax(const FrameAtom& frame, FrameMap& frameMap, AnswerSink& sink) {
  const auto& [relation, full_space, is_negated, arguments] = frame.atom;
  const std::string_view name = relation.text();
  const std::string_view space = full_space.substr(0, full_space.size() - kFrameMarker.size());
  const auto [object, second, value, arrow] = split_arguments(arguments.text());
  if (name == kSubClassOf || name == kInstanceOf) {
    const NamespaceTable* const spaces = arguments.namespaces();
    const ClassStatement statement{AnswerTerm(object, spaces), AnswerTerm(second, spaces), space,
                                   is_negated};
    name == kSubClassOf ? sink.subclass(statement) : sink.membership(statement);
  } else if (frame.noValue) {
    frameMap.add_valueless({object, suffix_of(space), second, is_negated, {}, {}});
  } else if (name == kValueOf) {
    frameMap.add_value(
        {object, suffix_of(space), second, is_negated, without_quotes(arrow), value});
  } else {
    sink.foreign_frame_atom(frame.atom);
  }
}

}    // namespace zarel
