#pragma once
// names.h - how generated names are made and taken apart. A name may carry a label behind it (an
// underscore and a number), a prefix in front (digits and punctuation, such as a template's "#" and
// number), "-" in front for strong negation, "@" in front for an invocation's marker atom.

#include <span>
#include <string>
#include <string_view>
#include <utility>

#include "model/atom.h"

namespace zarel {

struct DEFINITIONATOM;

// The part before the last "_"; empty when there is no "_" behind the first character.
std::string getNameWithoutLabel(std::string_view name);

// The number behind the last "_"; 0 when there is none.
int getLabel(std::string_view name);

// name, "_", n.
std::string getNameLabeledConst(std::string_view name, int n);

// The first of name_counter, name_(counter+1), ... that is no predicate; every try takes one value
// of the counter.
std::string getNameLabeled(std::string_view name, int& counter);

// The same, counting from 0.
std::string getAtomLabeled(std::string_view name);

// "#", the definition's sequence number, its name.
std::string getNameTemplateLabeled(const DEFINITIONATOM& definition);

// "#", the number of the template definition being read, the name.
std::string getNameAtomLabeled(std::string_view name);

// Reports and counts an error for what getNameAtomLabeled cannot make a predicate of: a quoted
// string, a function term.
void check_template_name(std::string_view name);

// The number that getNameAtomLabeled writes (the established name).
int& cont();

// The name from its first character above '9' on: prefix and "-" are dropped.
std::string_view getName(std::string_view name);

// The name without its prefix; a "-" ends the prefix and stays.
std::string_view getNameWithoutPrefix(std::string_view name);

// The name cut at its first "_" behind any leading underscores, which stay or are left out.
enum class LeadingUnderscores { kKeep, kSkip };
std::string_view cut_at_underscore(std::string_view name, LeadingUnderscores leading);

// Whether getName of the atom's predicate is the name of a pair.
bool isFormalPred(const ATOMT& atom, std::span<const std::pair<const char*, ATOMT>> formals);

// Whether an atom of the list has the atom's predicate name, both without prefix and cut at their
// first "_".
bool esiste(const TCONJUNCTION<ATOMT>& list, const ATOMT& atom);

// Whether a agrees with the first terms of b wherever a has neither "*" nor "$". b is at least as
// long as a.
bool parametersCoincidence(std::span<const TERMT> a, std::span<const TERMT> b);

}    // namespace zarel
