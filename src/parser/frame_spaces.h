#pragma once
// frame_spaces.h - the frame space in which an atom of the input stands.

#include "model/name_table.h"
#include "model/program.h"
#include "parser/written_tree.h"

namespace zarel {

class FrameSpaces {
 public:
  explicit FrameSpaces(WrittenTree& tree);

  void start_file();                // back to "default"
  void set_default(NameId name);    // "@name.": for the atoms that follow
  void reset_default();             // "@."

  // The frame space of one atom: the name written behind it, or the current default.
  NameId named(NameId name);
  NameId current();

  NameId currentDefaultNs() const { return currentDefaultNs_; }    // without reading an atom there
  NameId defaultFrameSpace() const { return defaultFrameSpace_; }    // that of the last atom
  const NameList& fspace() const { return fspace_; }    // every one named in the program

 private:
  void reset();

  WrittenTree& tree_;
  NameId default_name_;    // "default"
  NameId currentDefaultNs_;
  NameId defaultFrameSpace_;
  NameList fspace_;
};

}    // namespace zarel
