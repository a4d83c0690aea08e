#pragma once
// template_records.h - the records of template definitions and invocations, as plain data; what is
// done with them is no matter of the model.

#include <cstdint>
#include <optional>
#include <string>
#include <unordered_set>
#include <vector>

#include "model/atom.h"
#include "model/clause.h"
#include "model/literal.h"

namespace zarel {

// One formal predicate of a template definition.
struct FORMALPRED {
  std::string name;
  std::int32_t arity;
};

// One template definition. Its sequence number counts the definitions of the run from 0.
struct DEFINITIONATOM {
  std::string name;
  TCONJUNCTION<FORMALPRED> formals;
  std::int32_t outputArity;
  std::vector<CLAUSET> rules;
  std::uint32_t sequence_number;
  std::unordered_set<NameId> globals = {};    // the names behind its own GLOBAL
  NameId frame_space = {};                    // the default one where it stands
  SourceSpan head = {};                       // where that is written
};

// What an actual predicate stands for; only linked templates look at it.
struct ActualOrigin {
  ATOMT shape;                          // the predicate and its parameters as first written
  std::optional<NameId> frame_space;    // of a relation of the program; none: a plain predicate
};

// One use of a template in a body.
struct INVOCATIONATOM {
  std::string name;
  std::vector<TERMT> outputTerms;
  TCONJUNCTION<ATOMT> actuals;               // the i-th binds the i-th formal predicate
  std::vector<ActualOrigin> origins = {};    // one for each actual predicate
  std::uint32_t expansion_key = 0;           // tells linked invocations of one text apart; else 0
  std::uint32_t level = 0;                   // how many expansions it is nested in
  SourceSpan written = {};                   // its place
  OriginId origin = OriginId::kWritten;      // of the clause that it stands in
  std::optional<ATOMT> marker = {};          // that stands for it, where it was made
};

}    // namespace zarel
