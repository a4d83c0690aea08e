#include "model/program.h"

namespace zarel {

void NameList::add(NameId name) {
  if (known_.insert(name).second) names_.push_back(name);
}

bool NameList::contains(NameId name) const {
  return known_.count(name) != 0;
}

void addedAtom(std::string_view name) {
  addedAtom(names().intern(name));
}

void addedAtom(NameId name) {
  Atom_Globals().add(name);
}

}    // namespace zarel
