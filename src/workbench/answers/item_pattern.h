#pragma once
// item_pattern.h - what --filter names of an answer set: relations, attributes, classes, spaces.

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace workbench {

enum class PatternKind : std::uint8_t {
  kRelation,      // second: its name
  kMembership,    // first: the object, second: the class
  kSubclass,      // first: the class, second: its superclass
  kAttribute,     // first: the object or a class of it, second: the attribute
};
inline constexpr std::size_t kPatternKinds = 4;

// Note [readings of a pattern]
// A pattern is read before there is a program, so it is not known what a name in it stands for:
// "ex:b" is the object ex of the class b, or the relation b of the prefix ex. A pattern keeps all
// that it may mean, and shows whatever matches one of these.
struct ItemPattern {
  struct Reading {
    PatternKind kind;
    std::string first, second;    // as written, without blanks; empty: anything
  };

  std::string text;                         // as given
  bool leaves_out = false;                  // what matches is hidden
  bool is_negated = false;                  // what is strongly negated alone; else both signs
  std::optional<std::size_t> arity = {};    // of a relation
  std::string space = {};                   // empty: any
  std::vector<Reading> readings = {};
};

struct ReadPatterns {
  std::vector<ItemPattern> patterns;
  std::string mistake;    // what the user is to be told; empty for none
};

// Reads patterns with commas between them:
//   p   p/2   -p   [age]   [-dead]   ann[age,size]   X:person   :person   C::D   ::mortal   @parish
// each with "!" in front to leave out, and "@space" behind. Upper-case words and "_" are anything.
ReadPatterns read_item_patterns(std::string_view text);

}    // namespace workbench
