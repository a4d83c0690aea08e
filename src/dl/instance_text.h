#pragma once
// instance_text.h - open statements with their variables replaced: see Note [instances].

#include <string>
#include <vector>

#include "dl/instances.h"
#include "dl/statement.h"

namespace dl {

// The literals that an atom which becomes a helper has in one of its relations.
std::string view_body(const Instances& instances, const Statement& statement, const AtomShape& atom,
                      const Relation& relation);

// Puts the helper in the atom's place.
void replace_by_view(Statement& statement, const AtomShape& atom, const std::string& helper);

// Whether what an instance says depends on a variable even where no literal has it.
enum class VariableUse : bool { kWithinLiterals, kAsAnswers };

class InstanceMaker {
 public:
  // All must outlive the maker; the statement has its views already.
  InstanceMaker(const Instances& instances, const InstancePlan& plan, const Statement& statement,
                VariableUse use)
      : instances_(instances), plan_(plan), statement_(statement), use_(use) {}

  // The instance for these values of the plan's slots, valid until the next call.
  Statement& make(const std::vector<Symbol>& values);

 private:
  void write_atoms(const std::vector<Symbol>& values);
  void write_atom(std::uint32_t term, std::string predicate);
  void write_other_atom(std::uint32_t term);
  void renew_uses(std::vector<Literal>& body);
  void note_uses(Slice uses);
  void add_equality(VariableId variable, Symbol value);

  const Instances& instances_;
  const InstancePlan& plan_;
  const Statement& statement_;
  VariableUse use_;
  Statement instance_;
  std::vector<Symbol> values_;    // by variable; kNoSymbol for one that has none
  std::vector<char> is_used_;     // by variable
};

}    // namespace dl
