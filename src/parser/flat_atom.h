#pragma once
// flat_atom.h - atoms that are read as one token.

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace zarel {

// Note [flat facts]
// Nearly all of a large program are atoms of the form name(term,term,...): facts, heads, literals of
// bodies. As nine tokens and a dozen reductions, such an atom takes twice as long as the rest of its
// way to the output. So the scanner, when it has read a word where a statement or a literal begins,
// looks whether it is the first of a flat atom that is in its buffer to the end, and gives it to the
// grammar as one token: with its full stop when it is a fact. What is not, and what is no atom for
// sure, goes the usual way, token by token, to the same result.

// A piece of a flat atom, from left to right. A function term is its functor, its arguments and its
// end; a qualified constant its prefix and its local name.
struct FlatPart {
  enum class Kind : std::uint8_t {
    kConstant,
    kVariable,
    kInteger,
    kAnonymous,
    kFunctor,
    kFunctionEnd,
    kPrefix,
    kLocal,
  };

  Kind kind;
  std::uint32_t begin;    // in the text
  std::uint32_t length;
  std::uint32_t value;    // of an integer
};

class ShortQualifiedConstants;

// The flat atom that was read last.
class FlatAtom {
 public:
  // The constants are told early which of them the grammar's actions will ask for.
  explicit FlatAtom(const ShortQualifiedConstants& constants) : constants_(constants) {}

  // Reads the one that begins with the first `word_length` characters of the text. Its length; 0
  // without one.
  std::size_t read(std::string_view text, std::size_t word_length);

  std::string_view name() const { return text_.substr(0, name_length_); }
  std::span<const FlatPart> parts() const { return parts_; }
  std::string_view text(const FlatPart& part) const {
    return text_.substr(part.begin, part.length);
  }
  // Whether each part is a term: no function terms, qualified constants, anonymous variables.
  bool is_simple() const { return is_simple_; }

 private:
  void add(FlatPart::Kind kind, std::size_t begin, std::size_t length, std::uint32_t value = 0) {
    parts_.push_back(
        {kind, static_cast<std::uint32_t>(begin), static_cast<std::uint32_t>(length), value});
  }
  std::size_t read_term(std::size_t begin);
  std::size_t read_integer(std::size_t begin);
  std::size_t read_name(std::size_t begin);

  const ShortQualifiedConstants& constants_;
  std::string_view text_;    // from the atom on
  std::size_t name_length_ = 0;
  std::size_t depth_ = 0;    // of open function terms
  bool is_simple_ = true;
  std::vector<FlatPart> parts_;
};

}    // namespace zarel
