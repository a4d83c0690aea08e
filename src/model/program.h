#pragma once
// program.h - the lists of the program: clauses, queries, include lines, and the names that were
// recorded on the way.

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "model/clause.h"

namespace zarel {

// Names without duplicates, in first-seen order.
class NameList {
 public:
  void add(NameId name);    // nothing when it is there
  bool contains(NameId name) const;
  const std::vector<NameId>& names() const { return names_; }

 private:
  std::vector<NameId> names_;
  std::unordered_set<NameId> known_;
};

std::vector<CLAUSET>& CLAUSES();    // the rewritten program, in output order
std::vector<Body>& QUERIES();
std::vector<std::string>& Includes();    // whole "#include" lines, without their line ends
NameList& GLOBALS();                     // predicates that templates may read
NameList& Atom_Globals();                // the solver's predicates that the user's atoms became
int& nclause();                          // how many of the last CLAUSES template expansion made

// Records the name in Atom_Globals.
void addedAtom(std::string_view name);
void addedAtom(NameId name);

}    // namespace zarel
