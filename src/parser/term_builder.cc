#include "parser/term_builder.h"

#include <limits>
#include <string>

#include "functions/function_terms.h"
#include "model/clause.h"
#include "model/namespaces.h"
#include "parser/reading_scope.h"
#include "parser/text_range.h"

namespace zarel {
namespace {

constexpr std::uint32_t kFractionDigits = 3;

std::uint32_t scaled_fraction(Number fraction) {
  std::uint32_t value = fraction.value;
  for (std::uint32_t digits = fraction.digit_count; digits < kFractionDigits; ++digits) value *= 10;
  for (std::uint32_t digits = fraction.digit_count; digits > kFractionDigits; --digits) value /= 10;
  return value;
}

TERMT scaled_weight(std::uint32_t whole, std::uint32_t fraction) {
  const std::uint64_t scaled = std::uint64_t{whole} * kWeightScale + fraction;
  if (scaled > std::numeric_limits<std::uint32_t>::max()) {
    report(Code::kWeightRange, "weak constraint weight out of range");
  }
  return TERMT::integer(static_cast<std::int32_t>(static_cast<std::uint32_t>(scaled)));
}

// A local name may be a string: its quotes would end the address it becomes part of.
std::string_view without_quotes(std::string_view name) {
  return name.starts_with('"') ? name.substr(1, name.size() - 2) : name;
}

}    // namespace

// Nothing when the prefix is unknown. A declaration is final, and most constants have the prefix of
// the one before, so the beginning of its address stays.
std::optional<TERMT> TermBuilder::new_qualified(NameId prefix, std::string_view local) {
  if (address_prefix_ != prefix) {
    const auto opening = opening_of_address(names().spelling(prefix));
    if (!opening) return std::nullopt;
    address_ = *opening;
    address_opening_ = opening->size();
    address_prefix_ = prefix;
  }
  note_prefix_use();
  address_.resize(address_opening_);
  address_.append(without_quotes(local)).push_back('"');
  return newTERMT(address_);
}

TERMT TermBuilder::qualified(const NamePair& prefix_and_local) {
  if (tree_.is_open()) tree_.qualified(prefix_and_local.first, prefix_and_local.second);
  if (const auto known = qualified_constants_.find(prefix_and_local)) return *known;
  const auto [prefix, local] = prefix_and_local;
  if (const auto constant = new_qualified(prefix, names().spelling(local))) {
    qualified_constants_.note(prefix_and_local, *constant);
    return *constant;
  }
  std::string message = "An URI with id '";
  message.append(names().spelling(prefix)).append("' does not exist");
  const SourceRange whole = work().where().range;
  const SourceRange own =
      range_of_text(whole.first_line, whole.first_column, names().spelling(prefix));
  const ReadingScope at_prefix(work(), &own);
  report(Code::kUnknownPrefix, message);
  return newTERMT(local);
}

TERMT TermBuilder::function(WrittenName functor, TermsMark arguments) {
  if (const std::string_view name = names().spelling(functor.id); name.starts_with('"')) {
    std::string message = "a functor must be a name without quotes, not ";
    const ReadingScope at_functor(work(), functor.place);
    report(Code::kQuotedFunctor, message.append(name));
  }
  const std::span<const TERMT> terms = take(arguments);
  if (tree_.is_open()) {
    tree_.named(WrittenKind::kFunction, terms.size(), functor.id, functor.place);
  }
  return newFTERM(functor.id, terms);
}

SourceRange place_in_flat_atom(const Work& work, const FlatPart& part) {
  const SourceRange whole = work.where().range;
  const std::uint32_t begin = whole.first_column + part.begin;
  return {whole.first_line, begin, whole.first_line, begin + part.length - 1};
}

// An integer may be reported: it stands where it is in the atom, not where that is.
TERMT TermBuilder::flat_integer(const FlatPart& part) {
  const SourceRange own = place_in_flat_atom(work(), part);
  const ReadingScope at_own(work(), &own);
  return bounds_.integer(part.value);
}

TERMT TermBuilder::flat_qualified(const FlatAtom& atom, const FlatPart& prefix,
                                  const FlatPart& local) {
  const NameId first = names().intern(atom.text(prefix));
  const std::string_view local_text = atom.text(local);
  if (ShortQualifiedConstants::takes(local_text)) {
    if (const auto known = short_constants_.find(first, local_text)) return *known;
    if (const auto constant = new_qualified(first, local_text)) {
      short_constants_.note(first, local_text, *constant);
      return *constant;
    }
  }
  const SourceRange own =
      joined(place_in_flat_atom(work(), prefix), place_in_flat_atom(work(), local));
  const ReadingScope at_own(work(), &own);
  return qualified({first, names().intern(local_text)});
}

TermsMark TermBuilder::flat_arguments(const FlatAtom& atom) {
  TermsMark list = empty_list();
  const FlatPart* before = nullptr;
  for (const FlatPart& part : atom.parts()) {
    switch (part.kind) {
      case FlatPart::Kind::kConstant:
        list = next(list, TERMT::constant(names().intern(atom.text(part))));
        break;
      case FlatPart::Kind::kVariable:
        list = next(list, newTERMT(names().intern(atom.text(part))));
        break;
      case FlatPart::Kind::kInteger:
        list = next(list, flat_integer(part));
        break;
      case FlatPart::Kind::kAnonymous:
        list = next(list, TERMT::anonymous());
        break;
      case FlatPart::Kind::kFunctor:
        open_functions_.push_back({names().intern(atom.text(part)), list});
        list = empty_list();
        break;
      case FlatPart::Kind::kFunctionEnd: {
        const auto [functor, around] = open_functions_.back();
        open_functions_.pop_back();
        list = next(around, newFTERM(functor, take(list)));
        break;
      }
      case FlatPart::Kind::kPrefix:
        break;
      case FlatPart::Kind::kLocal:
        list = next(list, flat_qualified(atom, *before, part));
        break;
    }
    before = &part;
  }
  return list;
}

TERMT TermBuilder::level(Number number) {
  if (tree_.is_open()) tree_.leaf(WrittenKind::kInteger, {}, number.value);
  return TERMT::integer(static_cast<std::int32_t>(number.value));
}

TERMT TermBuilder::weight(Number whole) {
  if (tree_.is_open()) tree_.leaf(WrittenKind::kInteger, {}, whole.value);
  return scaled_weight(whole.value, 0);
}

TERMT TermBuilder::weight(Number whole, Number fraction) {
  if (fraction.digit_count > kFractionDigits)
    report(Code::kWeightPrecision, "Number has more precision than supported. Truncated");
  if (tree_.is_open()) {
    const std::uint32_t thousandths = whole.value * kWeightScale + scaled_fraction(fraction);
    tree_.leaf(WrittenKind::kDecimal, {}, thousandths);
  }
  return scaled_weight(whole.value, scaled_fraction(fraction));
}

}    // namespace zarel
