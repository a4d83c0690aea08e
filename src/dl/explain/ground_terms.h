#pragma once
// ground_terms.h - names, strings, integers and the terms made of them, each stored once: equal
// terms are equal numbers.

#include <compare>
#include <cstdint>
#include <deque>
#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace dl {

// The number of a ground term, valid for its table.
using GroundTerm = std::uint32_t;
constexpr GroundTerm kNoTerm = 0x7fffffffu;

enum class GroundKind : std::uint8_t { kInteger, kConstant, kString, kCompound };

// A name of a constant, functor or predicate, or a string with its quotes, spelled as in the input.
using NameNumber = std::uint32_t;

class GroundTerms {
 public:
  NameNumber name(std::string_view spelling) { return name(spelling, hash_of(spelling)); }
  std::string_view spelling(NameNumber name) const { return names_[name]; }    // lasts

  // For lookups in batches: the hash of a spelling, and what a lookup with it begins with.
  static std::size_t hash_of(std::string_view spelling) {
    return std::hash<std::string_view>{}(spelling);
  }
  void prefetch(std::size_t hash) const {
    if (!name_slots_.empty()) {
      __builtin_prefetch(&name_slots_[hash & (name_slots_.size() - 1)]);
    }
  }
  GroundTerm constant(std::string_view spelling, std::size_t hash) {
    return simple(GroundKind::kConstant, name(spelling, hash));
  }

  // Each gives the term's number; the same one each time.
  static GroundTerm integer(std::uint32_t value) { return kIntegerBit | value; }    // of 31 bits
  GroundTerm constant(std::string_view name) {
    return simple(GroundKind::kConstant, this->name(name));
  }
  GroundTerm string(std::string_view quoted) { return simple(GroundKind::kString, name(quoted)); }
  GroundTerm compound(NameNumber functor, std::span<const GroundTerm> arguments);

  static bool is_integer(GroundTerm term) { return (term & kIntegerBit) != 0; }
  static std::uint32_t value(GroundTerm integer) { return integer & ~kIntegerBit; }
  GroundKind kind(GroundTerm term) const;
  NameNumber name_of(GroundTerm term) const { return terms_[term].name; }    // of no integer
  std::span<const GroundTerm> arguments(GroundTerm term) const;    // none of what is no compound

  // The order in which the solver's comparisons, #min and #max have terms: integers by value, then
  // constants, strings, and compounds by number of arguments, name and arguments.
  std::strong_ordering compare(GroundTerm left, GroundTerm right) const;

  // Appends the term as the input would spell it.
  void append(std::string& out, GroundTerm term) const;

 private:
  static constexpr std::uint32_t kIntegerBit = 0x80000000u;
  struct Stored {
    GroundKind kind;
    NameNumber name;
    std::uint32_t begin;    // of its arguments
    std::uint32_t count;
  };
  NameNumber name(std::string_view spelling, std::size_t hash);
  GroundTerm simple(GroundKind kind, NameNumber name);
  std::string_view kept(std::string_view spelling);
  void grow_names();
  void grow();
  static std::uint64_t hash_of(NameNumber functor, std::span<const GroundTerm> arguments);

  std::deque<std::string> blocks_;         // of spellings, none of which ever moves
  std::vector<std::string_view> names_;    // into them
  // By hash, of which each slot keeps a part: most that differ are told apart without a look at them.
  struct NameSlot {
    std::uint32_t hash = 0;
    NameNumber name = 0xffffffffu;
  };
  std::vector<NameSlot> name_slots_;
  std::vector<GroundTerm> constants_;    // by name: the term, kNoTerm where there is none
  std::vector<Stored> terms_;
  std::vector<GroundTerm> arguments_;
  std::vector<GroundTerm> slots_;    // of compounds, by hash
  std::size_t compounds_ = 0;
};

}    // namespace dl
