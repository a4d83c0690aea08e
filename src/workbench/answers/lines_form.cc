// lines_form.cc - a statement a line, for tools that work on lines.

#include "workbench/answers/buffered_form.h"
#include "workbench/answers/forms.h"
#include "workbench/answers/set_heading.h"
#include "workbench/answers/term_text.h"

namespace workbench {
namespace {

class LinesForm : public BufferedForm {
 public:
  using BufferedForm::BufferedForm;

  void answer_set(AnswerSet& set) override;
  void row(const zarel::AnswerTerms& values) override;
  void truth(bool holds) override { text_ += holds ? "true\n" : "false\n"; }
};

void LinesForm::answer_set(AnswerSet& set) {
  append_heading(text_, set);
  for (const Item& item : set.items()) {
    switch (item.kind) {
      case ItemKind::kAtom:
        append_atom(text_, set.atom(item));
        break;
      case ItemKind::kMembership:
      case ItemKind::kSubclass:
        append_class(text_, set.class_statement(item), item.kind);
        break;
      case ItemKind::kValue:
      case ItemKind::kAttribute:
        append_statement(text_, set.statement(item));
        break;
    }
    text_ += '\n';
    write_piece();
  }
}

void LinesForm::row(const zarel::AnswerTerms& values) {
  append_terms(text_, values);
  text_ += '\n';
  write_piece();
}

}    // namespace

std::unique_ptr<AnswerConsumer> make_lines_form(std::ostream& out,
                                                const FormSettings& /*settings*/) {
  return std::make_unique<LinesForm>(out);
}

}    // namespace workbench
