#pragma once
// template_records.h - the records of template definitions and invocations, as plain data; what is
// done with them is no matter of the model.

#include <cstdint>
#include <string>
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
};

// One use of a template in a body.
struct INVOCATIONATOM {
  std::string name;
  std::vector<TERMT> outputTerms;
  TCONJUNCTION<ATOMT> actuals;    // the i-th binds the i-th formal predicate
};

}    // namespace zarel
