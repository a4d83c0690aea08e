#pragma once
// foreign_text.h - what a program hands on to the solver as it stands: verbatim sections, and files
// that are included. Nobody here understands it, but a name that does not occur there is not meant.

#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

namespace workbench {

class ForeignText {
 public:
  void add(std::string text);

  // A file that an include line names, looked for beside the program's file, too. One that cannot
  // be read may hold anything.
  void add_file(std::string_view name, std::string_view program_file);

  bool is_empty() const { return texts_.empty() && !may_hold_anything_; }

  // Whether the text may speak of the name.
  bool mentions(std::string_view name) const;

 private:
  void make_words() const;

  std::vector<std::string> texts_;
  bool may_hold_anything_ = false;
  mutable bool has_words_ = false;
  mutable std::unordered_set<std::string_view> words_;
};

}    // namespace workbench
