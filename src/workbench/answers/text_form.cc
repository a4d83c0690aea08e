// text_form.cc - answers as the user writes atoms and frames, each set on a line.

#include "workbench/answers/buffered_form.h"
#include "workbench/answers/forms.h"
#include "workbench/answers/term_text.h"

namespace workbench {
namespace {

class TextForm : public BufferedForm {
 public:
  TextForm(std::ostream& out, const FormSettings& settings)
      : BufferedForm(out), settings_(settings) {}

  void answer_set(AnswerSet& set) override;
  void row(const zarel::AnswerTerms& values) override;
  void truth(bool holds) override { text_ += holds ? "true\n" : "false\n"; }
  void finish(const RunEnding& ending) override;

 private:
  void append_items(const AnswerSet& set);
  void append_objects(const AnswerSet& set);

  const FormSettings& settings_;
};

void TextForm::answer_set(AnswerSet& set) {
  if (!set.costs.empty()) text_ += set.is_improving ? "Better model: " : "Best model: ";
  text_ += '{';
  append_items(set);
  text_ += "}\n";
  append_costs(text_, set);
  write_piece();
}

void TextForm::append_items(const AnswerSet& set) {
  const char* separator = "";
  bool has_objects = false;
  for (const Item& item : set.items()) {
    if (item.kind == ItemKind::kValue || item.kind == ItemKind::kAttribute) {
      has_objects = true;
      continue;
    }
    text_ += separator;
    separator = ", ";
    if (item.kind == ItemKind::kAtom) {
      append_atom(text_, set.atom(item));
    } else {
      append_class(text_, set.class_statement(item), item.kind);
    }
    write_piece();
  }
  if (!has_objects) return;
  text_ += separator;
  append_objects(set);
}

void TextForm::append_objects(const AnswerSet& set) {
  const char* separator = "";
  set.each_object([this, &separator](const zarel::AnswerObject& object) {
    text_ += separator;
    separator = ",";
    append_object(text_, object);
    write_piece();
  });
}

void TextForm::row(const zarel::AnswerTerms& values) {
  append_terms(text_, values);
  text_ += '\n';
  write_piece();
}

void TextForm::finish(const RunEnding& ending) {
  if (!settings_.counts_only || ending.asked.is_ground) return;
  text_ += std::to_string(number_of_answers(ending.found, ending.asked)) += '\n';
  flush();
}

}    // namespace

std::unique_ptr<AnswerConsumer> make_text_form(std::ostream& out, const FormSettings& settings) {
  return std::make_unique<TextForm>(out, settings);
}

}    // namespace workbench
