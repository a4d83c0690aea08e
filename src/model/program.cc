#include "model/program.h"

namespace zarel {

void NameList::add(NameId name) {
  if (known_.insert(name).second) names_.push_back(name);
}

bool NameList::contains(NameId name) const {
  return known_.count(name) != 0;
}

void NameList::clear() {
  names_.clear();
  known_.clear();
}

std::vector<CLAUSET>& CLAUSES() {
  static std::vector<CLAUSET> clauses;
  return clauses;
}

std::vector<Body>& QUERIES() {
  static std::vector<Body> queries;
  return queries;
}

std::vector<std::string>& Includes() {
  static std::vector<std::string> lines;
  return lines;
}

NameList& GLOBALS() {
  static NameList list;
  return list;
}

NameList& Atom_Globals() {
  static NameList list;
  return list;
}

int& nclause() {
  static int count = 0;
  return count;
}

void addedAtom(std::string_view name) {
  addedAtom(names().intern(name));
}

void addedAtom(NameId name) {
  Atom_Globals().add(name);
}

void reset_program() {
  CLAUSES().clear();
  QUERIES().clear();
  Includes().clear();
  GLOBALS().clear();
  Atom_Globals().clear();
  nclause() = 0;
}

}    // namespace zarel
