#pragma once
// fact_text.h - what an answer set says, as statements of a program.

#include <cstdint>
#include <string>
#include <string_view>

#include "workbench/answers/answer_set.h"

namespace workbench {

// Each call appends whole lines. Read as a program without name spaces, they state just that.
class FactText {
 public:
  void append_atom(std::string& out, const zarel::AnswerAtom& atom);
  // Of an item of the set that is kMembership or kSubclass.
  void append_class(std::string& out, const AnswerSet& set, const Item& item);
  void append_object(std::string& out, const zarel::AnswerObject& object);

 private:
  void append_odd_atom(std::string& out, const zarel::AnswerAtom& atom);
  template <typename IsTaken>
  void append_values(std::string& out, const zarel::AnswerObject& object,
                     const zarel::AnswerAttribute& attribute, IsTaken&& is_taken);

  std::uint64_t odd_names_ = 0;
};

}    // namespace workbench
