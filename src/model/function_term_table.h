#pragma once
// function_term_table.h - what each function-term placeholder of the rule being read stands for.

#include <cstdint>
#include <unordered_map>
#include <vector>

#include "model/term.h"

namespace zarel {

// One function term: functor(arguments); an argument may be a placeholder again.
struct FTERM {
  NameId functor;
  std::vector<TERMT> arguments;
};

class FunctionTermTable {
 public:
  // Records what the placeholder variable of this number stands for.
  void enter(std::uint32_t variable, FTERM term);
  const FTERM* find(std::uint32_t variable) const;    // null when there is none
  std::uint32_t count() const {
    return count_;
  }    // function terms created for the rule being read
  void clear();

 private:
  std::uint32_t count_ = 0;
  std::unordered_map<std::uint32_t, FTERM> terms_;
};

FunctionTermTable& FTermTable();

}    // namespace zarel
