// wrapped_text_form.cc - answers for a screen: lines of its width, grouped by relation and object.

#include <unordered_map>
#include <vector>

#include "workbench/answers/buffered_form.h"
#include "workbench/answers/forms.h"
#include "workbench/answers/term_text.h"
#include "workbench/messages/characters.h"

namespace workbench {
namespace {

// What is not broken, as a place in a text, with its width on the screen.
struct Word {
  std::size_t begin, size, width;
};

// Words of a relation, or of an object.
using Group = std::vector<Word>;

class WrappedTextForm : public BufferedForm {
 public:
  WrappedTextForm(std::ostream& out, std::size_t columns) : BufferedForm(out), columns_(columns) {}

  void answer_set(AnswerSet& set) override;
  void row(const zarel::AnswerTerms& values) override;
  void truth(bool holds) override { text_ += holds ? "true\n" : "false\n"; }

 private:
  static constexpr std::size_t kGroupIndent = 1;
  static constexpr std::size_t kLineIndent = 4;

  template <typename Append>
  Word word(Append&& append);
  void gather(const AnswerSet& set);
  Group& group_of(const AnswerSet& set, const Item& item);
  Group object_words(const zarel::AnswerObject& object);
  bool fits_into_a_line(std::size_t column) const;
  void write_groups(std::size_t column);
  void begin_line(std::size_t indent) { (text_ += '\n').append(indent, ' '); }

  std::size_t columns_;
  std::string words_;    // of one answer set, all that follow for it as well
  std::string word_;
  std::vector<Group> groups_;
  std::unordered_map<std::string, std::size_t> group_numbers_;    // by sign, relation and space
};

template <typename Append>
Word WrappedTextForm::word(Append&& append) {
  word_.clear();
  append(word_);
  const std::size_t begin = words_.size();
  const std::size_t width = append_shown(words_, word_);
  return {begin, words_.size() - begin, width};
}

Group& WrappedTextForm::group_of(const AnswerSet& set, const Item& item) {
  std::string key;
  if (item.kind == ItemKind::kAtom) {
    const zarel::AnswerAtom atom = set.atom(item);
    (key += atom.is_negated ? '-' : '+') += atom.relation.text();
    (key += '@') += atom.space;
  } else {
    key = item.kind == ItemKind::kMembership ? ":" : "::";
  }
  const auto [found, is_new] = group_numbers_.try_emplace(std::move(key), groups_.size());
  if (is_new) groups_.emplace_back();
  return groups_[found->second];
}

Group WrappedTextForm::object_words(const zarel::AnswerObject& object) {
  Group words;
  for (const zarel::AnswerAttribute& attribute : object.attributes) {
    const bool is_first = &attribute == &object.attributes.front();
    const bool is_last = &attribute == &object.attributes.back();
    words.push_back(word([&](std::string& out) {
      if (is_first) append_term(out, object.name);
      if (is_first) out += '[';
      append_attribute(out, attribute);
      if (!is_last) return;
      out += ']';
      append_space(out, object.space);
    }));
  }
  return words;
}

void WrappedTextForm::gather(const AnswerSet& set) {
  words_.clear();
  groups_.clear();
  group_numbers_.clear();
  for (const Item& item : set.items()) {
    if (item.kind == ItemKind::kAtom) {
      group_of(set, item).push_back(
          word([&](std::string& out) { append_atom(out, set.atom(item)); }));
    } else if (item.kind == ItemKind::kMembership || item.kind == ItemKind::kSubclass) {
      group_of(set, item).push_back(
          word([&](std::string& out) { append_class(out, set.class_statement(item), item.kind); }));
    }
  }
  set.each_object(
      [this](const zarel::AnswerObject& object) { groups_.push_back(object_words(object)); });
}

bool WrappedTextForm::fits_into_a_line(std::size_t column) const {
  for (const Group& group : groups_) {
    for (const Word& word : group) {
      column += word.width + 2;    // a comma and a blank, or at last a brace
      if (column > columns_ + 1) return false;
    }
  }
  return true;
}

// In one line all groups follow each other; in several each begins one.
void WrappedTextForm::write_groups(std::size_t column) {
  const bool is_one_line = fits_into_a_line(column);
  for (const Group& group : groups_) {
    for (const Word& word : group) {
      const bool begins_group = &word == &group.front();
      const bool is_first = begins_group && &group == &groups_.front();
      if (!is_first && begins_group && !is_one_line) {
        begin_line(column = kGroupIndent);
      } else if (!is_first && column + 1 + word.width + 1 > columns_) {
        begin_line(column = kLineIndent);
      } else if (!is_first) {
        text_ += ' ';
        ++column;
      }
      text_.append(words_, word.begin, word.size);
      column += word.width + 1;
      const bool is_last = &word == &group.back() && &group == &groups_.back();
      if (!is_last) text_ += ',';
      write_piece();
    }
  }
}

void WrappedTextForm::answer_set(AnswerSet& set) {
  gather(set);
  const std::string_view opening = set.costs.empty()  ? "{"
                                   : set.is_improving ? "Better model: {"
                                                      : "Best model: {";
  text_ += opening;
  write_groups(opening.size());
  text_ += "}\n";
  append_costs(text_, set);
  write_piece();
}

void WrappedTextForm::row(const zarel::AnswerTerms& values) {
  word_.clear();
  append_terms(word_, values);
  append_shown(text_, word_);
  text_ += '\n';
  write_piece();
}

}    // namespace

std::unique_ptr<AnswerConsumer> make_wrapped_text_form(std::ostream& out, std::size_t columns) {
  return std::make_unique<WrappedTextForm>(out, columns);
}

}    // namespace workbench
