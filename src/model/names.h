#pragma once
// names.h - how generated names are made and taken apart. A name may carry a label behind it (an
// underscore and a number), a prefix in front (digits and punctuation, such as a template's "#" and
// number), "-" in front for strong negation, "@" in front for an invocation's marker atom.

#include <string>
#include <string_view>

namespace zarel {

// The part before the last "_"; empty when there is no "_" behind the first character.
std::string getNameWithoutLabel(std::string_view name);

// The number behind the last "_"; 0 when there is none.
int getLabel(std::string_view name);

// name, "_", n.
std::string getNameLabeledConst(std::string_view name, int n);

// The first of name_counter, name_(counter+1), ... that is no predicate; every try takes one value
// of the counter.
std::string getNameLabeled(std::string_view name, int& counter);

// "#", the number of the template definition being read, the name.
std::string getNameAtomLabeled(std::string_view name);

// Reports and counts an error for what getNameAtomLabeled cannot make a predicate of: a quoted
// string, a function term.
void check_template_name(std::string_view name);

// The number that getNameAtomLabeled writes (the established name).
int& cont();

// The name without its prefix; a "-" ends the prefix and stays.
std::string_view getNameWithoutPrefix(std::string_view name);

// The name without the "-" of strong negation in front.
constexpr std::string_view without_minus(std::string_view name) {
  return name.substr(name.starts_with('-') ? 1 : 0);
}

// The name cut at its first "_" behind any leading underscores, which stay or are left out.
enum class LeadingUnderscores { kKeep, kSkip };
std::string_view cut_at_underscore(std::string_view name, LeadingUnderscores leading);

}    // namespace zarel
