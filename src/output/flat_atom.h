#pragma once
// flat_atom.h - atoms without terms in terms, read as one token.

#include <cstddef>
#include <string_view>

namespace zarel {

// Note [flat atoms]
// Nearly all atoms of an answer set are of the form word(term,term,...) with words, numbers and
// quoted strings for terms and without blanks. As ten tokens, such an atom takes several times as
// long as the rest of its way to the output. So the scanner, when it has read a word, looks whether
// it is the first of a flat atom that is in its buffer to the end, and gives it to the grammar as
// one token. What is not goes the usual way, token by token, to the same result.

// Where in a flat atom its first terms end.
struct FlatAtom {
  std::size_t word_end, first_end, second_end;
};

// The length of the flat atom, of two terms or more, that begins with the first `word_length`
// characters of the text; without one, `word_length`.
std::size_t length_with_terms(std::string_view text, std::size_t word_length);

// The places in the text of a whole flat atom.
FlatAtom split_flat_atom(std::string_view text);

}    // namespace zarel
