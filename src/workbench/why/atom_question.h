#pragma once
// atom_question.h - reads the atom that an explanation is asked of, as a program could have it.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dl/explain/body_evaluator.h"
#include "dl/explain/explained_answer.h"
#include "workbench/command_line.h"
#include "zarel/program.h"

namespace workbench {

// What was asked for, as a body of the solver's language: a frame of several statements is several
// literals, function terms are literals, too.
struct AtomQuestion {
  std::string written;    // on one line
  std::string body;
  bool is_negated = false;    // "not" stands in front
  // Of the query: the values of its row, in the solver's language; nothing for "?" alone.
  bool is_row = false;
  std::vector<std::string> row;
};

// Reads the text with the name spaces and the templates of the program, which was rewritten. What is
// wrong with it is told in `messages`, at places of a text that is called `name`; nothing is
// returned then.
std::optional<AtomQuestion> read_question(std::string_view text, std::string_view name,
                                          zarel::Program& program, const CommandLine& line,
                                          std::ostream& messages);

// A question as atoms of an answer.
class AskedAtoms {
 public:
  // An atom of the question with values for all of its variables.
  struct Atom {
    dl::PredicateNumber predicate = 0;
    std::vector<dl::GroundTerm> arguments;
  };

  // The answer must outlive the object; it was found, or looked at.
  AskedAtoms(const AtomQuestion& question, dl::ExplainedAnswer& answer);

  bool is_ground() const { return is_ground_; }
  const std::vector<Atom>& atoms() const { return atoms_; }    // of a ground question, or one atom
  // The same as literals of the solver's language, with "not" where that is asked for; with
  // variables one that says that some instance holds.
  std::vector<std::string> demands() const;
  // Whether it is one atom, each of whose arguments has a value or is a variable of its own. Then
  // its arguments in atoms() are kNoTerm where a variable stands.
  bool is_one_atom() const { return is_one_atom_; }

  // The atoms of the answer set that the question is about: those of each instance behind each
  // other, each once. At most so many instances are taken; all are counted.
  struct Held {
    std::vector<dl::AtomNumber> atoms;
    std::uint64_t instances = 0;
  };
  Held held(std::uint64_t most);

 private:
  dl::ExplainedAnswer& answer_;
  const bool is_negated_;
  dl::Program program_;
  std::unique_ptr<dl::StatementStore> store_;
  const std::string body_;
  bool is_ground_ = false;
  bool is_one_atom_ = false;
  std::vector<Atom> atoms_;
};

}    // namespace workbench
