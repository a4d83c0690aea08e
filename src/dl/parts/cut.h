#pragma once
// cut.h - a search is cut into parts that have no answer set in common and together have all.

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "dl/parts/crew.h"
#include "dl/parts/ground_program.h"

namespace dl {

// What others of the crew do in the meantime. Returns false when no cut is needed any more.
using Meanwhile = std::function<bool(const Crew::Event&)>;

struct CutSettings {
  std::vector<std::string> arguments;    // with which clingo solves a part
  std::size_t parts = 0;                 // at least so many are wanted
  std::size_t workers = 1;               // at once
  bool cuts_easy_parts = false;          // also what is finished in a moment
};

// Returns the parts in the order of the cut, each a cube below `root`; none when it has no answer
// set. They may be some more than are wanted, and fewer where what is left is easy, or nothing is
// left to choose. Nothing when it
// was stopped, or interrupted. Throws FailedWorker, and Failure.
//
// Note [cutting]
// Constraints only remove answer sets, so whatever the program is, the parts with `a`, and with
// `not a` and `b`, and with neither, share no answer set and together have all: that holds for any
// atoms, and only how hard the parts are depends on the choice. Programs choose one of several, so
// all atoms of one head make the parts (or else one atom makes two), of the head whose atoms clasp
// learns most about in the first 1000 conflicts. The part that is likely to be the hardest is cut
// next: of a part's share of the whole, each of its own gets as much as the fourth power of the
// variables says that clasp still has behind preprocessing. What clasp refutes in so short a
// time is left out.
std::optional<std::vector<Cube>> cut(const GroundProgram& program, const Cube& root, Crew& crew,
                                     const CutSettings& settings, const Meanwhile& meanwhile);

}    // namespace dl
