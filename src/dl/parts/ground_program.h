#pragma once
// ground_program.h - what the grounder makes of a program: rules over numbered atoms, in the text
// form aspif that gringo writes and clasp reads. A part of a search is such a program with a few
// literals that have to hold.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "dl/child_process.h"

namespace dl {

using GroundAtom = std::uint32_t;           // from 1
using GroundLiteral = std::int32_t;         // an atom, or its negation as a negative number
using Cube = std::vector<GroundLiteral>;    // literals that hold together; empty: the whole

class GroundProgram {
 public:
  // Throws Failure when the text is not a whole one.
  explicit GroundProgram(std::string text);

  const std::string& text() const { return text_; }
  std::string_view whole_rules() const;    // all but the last line, which ends a program
  // A file in memory with the program in which the cube holds, to be read from its beginning.
  Descriptor part(const Cube& cube) const;

 private:
  std::string text_;
};

// What a search can be cut by.
struct Choices {
  // Heads of two atoms and more, of disjunctions and choices: of each, one or some may hold.
  std::vector<std::vector<GroundAtom>> heads;
  // Atoms that may be either way for some other reason: those that occur under "not".
  std::vector<GroundAtom> negated;
  GroundAtom greatest_atom = 0;
};
Choices choices_of(const GroundProgram& program);

// The lines that make the cube hold, behind a program without its last line, and that line.
std::string cube_text(const Cube& cube);

// "3 -4 5"; read_cube() gives nothing for what is no such text.
std::string spelled(const Cube& cube);
bool read_cube(std::string_view text, Cube& cube);

}    // namespace dl
