#pragma once
// function_term_table.h - what each function-term placeholder of the rule being read stands for.

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

#include "model/term.h"

namespace zarel {

// One function term: functor(arguments); an argument may be a placeholder again. The table's own
// ones are valid until it is changed.
struct FTERM {
  NameId functor;
  std::span<const TERMT> arguments;
};

class FunctionTermTable {
 public:
  // Records what the placeholder variable of this number stands for.
  void enter(std::uint32_t variable, const FTERM& term);
  std::optional<FTERM> find(std::uint32_t variable) const;
  std::uint32_t count() const {
    return count_;
  }    // function terms created for the rule being read
  void clear();

 private:
  struct Entry {
    std::uint32_t epoch;
    NameId functor;
    std::size_t begin;    // of the arguments
    std::size_t size;
  };

  std::uint32_t count_ = 0;
  std::uint32_t epoch_ = 1;     // so that clearing costs nothing, however many variables there are
  std::vector<Entry> terms_;    // by variable; valid only when of the current epoch
  std::vector<TERMT> arguments_;    // of all of them
};

FunctionTermTable& FTermTable();

}    // namespace zarel
