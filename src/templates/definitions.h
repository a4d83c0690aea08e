#pragma once
// definitions.h - the template definitions of the program, each under its name.

#include <cstdint>
#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>

#include "model/template_records.h"

namespace zarel {

// h = 5h + c over the bytes as signed characters, from 0.
std::uint32_t template_hash(std::string_view text);

// Definitions in the order in which they were stored, and by name.
class DefinitionTable {
 public:
  // Stores the definition; false, and nothing is changed, when its name is taken.
  bool add(DEFINITIONATOM definition);
  const DEFINITIONATOM* find(std::string_view name) const;    // null: no such template
  const std::deque<DEFINITIONATOM>& all() const { return definitions_; }

 private:
  struct NameHash {
    std::size_t operator()(std::string_view name) const { return template_hash(name); }
  };

  std::deque<DEFINITIONATOM> definitions_;    // a deque: addresses stay put
  std::unordered_map<std::string_view, const DEFINITIONATOM*, NameHash> by_name_;
};

// The definitions of this process's program.
DefinitionTable& defhashmap();

// Stores a definition. A second one of a name ends the run with status 1 and a message, at the place
// of the work; a run that skips faulty statements goes on without it.
void addedDefinition(DEFINITIONATOM definition);

}    // namespace zarel
