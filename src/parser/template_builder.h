#pragma once
// template_builder.h - what the grammar's actions on template definitions call.

#include <vector>

#include "frames/frame_translation.h"
#include "model/template_records.h"
#include "parser/frame_spaces.h"
#include "parser/token_values.h"
#include "parser/written_tree.h"

namespace zarel {

// Reads one definition after the other: the head's parts, the head, the end of the body. Until then
// clauses go to the definition, and atoms are plain atoms of labelled names.
class TemplateBuilder {
 public:
  TemplateBuilder(const FrameSpaces& spaces, WrittenTree& tree) : spaces_(spaces), tree_(tree) {}

  void formal_predicate(NameId name, Number arity);
  void global_predicate(NameId name, const SourceRange& place);
  void open(WrittenName name, Number output_arity);
  void close();    // a second definition of a name ends the run
  void leave();    // a definition that is not whole is dropped

  bool is_open() const { return is_open_; }
  // Where finished clauses go: to the definition, else to the program.
  std::vector<CLAUSET>& clauses() { return is_open_ ? definition_.rules : CLAUSES(); }
  // What frames become there.
  FrameContext frame_context() const;

 private:
  const FrameSpaces& spaces_;
  WrittenTree& tree_;
  DEFINITIONATOM definition_{};
  SourceRange name_place_{};
  bool is_open_ = false;    // between the head and the end
};

}    // namespace zarel
