// diff_form.cc - what each answer set has and the one before has not, and the other way round.

#include <array>
#include <string>
#include <unordered_set>

#include "workbench/answers/forms.h"
#include "workbench/answers/set_heading.h"
#include "workbench/answers/term_text.h"

namespace workbench {
namespace {

class DiffForm : public AnswerConsumer {
 public:
  DiffForm(std::ostream& out, const FormSettings& settings) : out_(out), settings_(settings) {}

  void answer_set(AnswerSet& set) override;
  void row(const zarel::AnswerTerms& values) override;
  void truth(bool holds) override { text_ += holds ? "true\n" : "false\n"; }
  void flush() override;
  void finish(const RunEnding& /*ending*/) override {}

 private:
  static constexpr std::size_t kPiece = std::size_t{1} << 16;

  void append_others(char mark, const AnswerSet& set, const AnswerSet& without);
  void write_piece() {
    if (text_.size() >= kPiece) write();
  }
  void write();

  std::ostream& out_;
  const FormSettings& settings_;
  std::string text_;
  AnswerSet last_;    // none was empty
};

void append_item(std::string& out, const AnswerSet& set, const Item& item) {
  if (item.kind == ItemKind::kAtom) return append_atom(out, set.atom(item));
  if (item.kind == ItemKind::kMembership || item.kind == ItemKind::kSubclass) {
    return append_class(out, set.class_statement(item), item.kind);
  }
  const ObjectStatement said = set.statement(item);
  zarel::AnswerAttribute attribute{said.attribute, said.is_negated, said.arrow, {}};
  if (!said.arrow.empty()) attribute.values = {&said.value, 1};
  append_object(out, {said.object, said.space, {&attribute, 1}});
}

// The encodings of a set's items; [1]: of those that are strongly negated.
using Encodings = std::array<std::unordered_set<std::string_view>, 2>;

Encodings encodings_of(const AnswerSet& set) {
  Encodings encodings;
  for (const Item& item : set.items()) {
    encodings[item.is_negated ? 1 : 0].insert(set.encoding(item));
  }
  return encodings;
}

void DiffForm::append_others(char mark, const AnswerSet& set, const AnswerSet& without) {
  const Encodings known = encodings_of(without);
  for (const Item& item : set.items()) {
    if (known[item.is_negated ? 1 : 0].contains(set.encoding(item))) continue;
    (text_ += mark) += ' ';
    append_item(text_, set, item);
    text_ += '\n';
    write_piece();
  }
}

void DiffForm::answer_set(AnswerSet& set) {
  (text_ += set_heading(set)) += '\n';
  append_others('-', last_, set);
  append_others('+', set, last_);
  write_piece();
  if (!settings_.differs_from_facts) last_ = set;
}

void DiffForm::row(const zarel::AnswerTerms& values) {
  append_terms(text_, values);
  text_ += '\n';
  write_piece();
}

void DiffForm::write() {
  out_.write(text_.data(), static_cast<std::streamsize>(text_.size()));
  text_.clear();
}

void DiffForm::flush() {
  write();
  out_.flush();
}

}    // namespace

std::unique_ptr<AnswerConsumer> make_diff_form(std::ostream& out, const FormSettings& settings) {
  return std::make_unique<DiffForm>(out, settings);
}

}    // namespace workbench
