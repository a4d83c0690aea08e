#pragma once
// flat_fact.h - facts of one atom without terms in terms, read as one token.

#include <cstddef>
#include <string_view>

namespace zarel {

// Note [flat facts]
// Nearly all statements of a large program are facts of the form name(term,term,...). with words,
// numbers and strings for terms. As nine tokens and a dozen reductions, such a fact takes twice as
// long as the rest of its way to the output. So the scanner, when it has read a word where a
// statement begins, looks whether it is the first of a flat fact that is in its buffer to the end,
// and gives it to the grammar as one token. What is not, and what would be reported, goes the usual
// way, token by token, to the same result.

// The length of the flat fact, with its full stop, that begins with the first `word_length`
// characters of the text; 0 without one.
std::size_t length_of_flat_fact(std::string_view text, std::size_t word_length);

// The parts of a whole flat fact: its name, then its terms one by one.
class FlatFact {
 public:
  explicit FlatFact(std::string_view text) : rest_(text) {}

  // The next part; empty behind the last.
  std::string_view next();

 private:
  std::string_view rest_;
};

}    // namespace zarel
