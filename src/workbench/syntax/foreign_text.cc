#include "workbench/syntax/foreign_text.h"

#include <filesystem>
#include <fstream>
#include <sstream>
#include <utility>

#include "base/characters.h"

namespace workbench {
namespace {

// A relation that is a variable there may be any: a_3(R,default,X,Y).
bool has_variable_relation(std::string_view text) {
  for (std::size_t at = text.find("a_"); at != std::string_view::npos;
       at = text.find("a_", at + 1)) {
    std::size_t end = at + 2;
    while (end < text.size() && zarel::is_digit(text[end])) ++end;
    if (!zarel::has_at(text, end, '(')) continue;
    const std::size_t argument = text.find_first_not_of(" \t\n", end + 1);
    if (argument != std::string_view::npos && zarel::is_upper_case(text[argument])) return true;
  }
  return false;
}

}    // namespace

void ForeignText::add(std::string text) {
  if (has_variable_relation(text) || text.find("#include") != std::string::npos) {
    may_hold_anything_ = true;
  }
  texts_.push_back(std::move(text));
  has_words_ = false;
}

void ForeignText::add_file(std::string_view name, std::string_view program_file) {
  if (name.size() >= 2 && name.front() == '"') name = name.substr(1, name.size() - 2);
  const std::filesystem::path path(name);
  std::ifstream in(path, std::ios::binary);
  if (!in) in.open(std::filesystem::path(program_file).parent_path() / path, std::ios::binary);
  if (!in) {
    may_hold_anything_ = true;
    return;
  }
  std::ostringstream text;
  text << in.rdbuf();
  add(std::move(text).str());
}

void ForeignText::make_words() const {
  words_.clear();
  for (const std::string_view text : texts_) {
    for (std::size_t i = 0; i < text.size();) {
      std::size_t end = i;
      while (end < text.size() && zarel::is_in_word(text[end])) ++end;
      if (end > i) words_.insert(text.substr(i, end - i));
      i = end + 1;
    }
  }
  has_words_ = true;
}

bool ForeignText::mentions(std::string_view name) const {
  if (may_hold_anything_) return true;
  if (texts_.empty()) return false;
  if (!has_words_) make_words();
  if (name.size() >= 2 && name.front() == '"') {
    for (const std::string& text : texts_) {
      if (text.find(name) != std::string::npos) return true;
    }
    return false;
  }
  return words_.contains(name);
}

}    // namespace workbench
