#pragma once
// sample_text.h - inputs for measurements: the same in every run, and as varied as users' are.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zarel {

// Programs of that many statements.
std::string fact_text(std::size_t count);
std::string rule_text(std::size_t count);     // five body literals, comparisons and strings
std::string frame_text(std::size_t count);    // five attributes, one of them nested
std::string function_rule_text(std::size_t count);

// One answer set of that many atoms, as the solver prints it.
std::string answer_set_text(std::size_t count);
std::string frame_answer_set_text(std::size_t count);    // over a tenth as many objects

// Spellings of names, in an order that jumps between them; a tenth of them are distinct.
std::vector<std::string> spellings(std::size_t count);

// Reads the program into empty tables. Throws std::logic_error when it has errors.
void read_text(std::string_view program);

}    // namespace zarel
