// facts_form.cc - an answer set as a program of facts that, solved, has it as its answer set.

#include "workbench/answers/buffered_form.h"
#include "workbench/answers/fact_text.h"
#include "workbench/answers/forms.h"
#include "workbench/answers/set_heading.h"

namespace workbench {
namespace {

class FactsForm : public BufferedForm {
 public:
  using BufferedForm::BufferedForm;

  void answer_set(AnswerSet& set) override;
  void row(const zarel::AnswerTerms& values) override;
  void truth(bool holds) override;
  void finish(const RunEnding& ending) override;

 private:
  FactText facts_;
  bool is_first_ = true;
};

void FactsForm::answer_set(AnswerSet& set) {
  if (!is_first_) text_ += "% Each answer set is a program of its own: -n 1 writes one alone.\n";
  is_first_ = false;
  append_heading(text_, set);
  bool has_objects = false;
  for (const Item& item : set.items()) {
    if (item.kind == ItemKind::kAtom) {
      facts_.append_atom(text_, set.atom(item));
    } else if (item.kind == ItemKind::kMembership || item.kind == ItemKind::kSubclass) {
      facts_.append_class(text_, set, item);
    } else {
      has_objects = true;
    }
    write_piece();
  }
  if (!has_objects) return;
  set.each_object([this](const zarel::AnswerObject& object) {
    facts_.append_object(text_, object);
    write_piece();
  });
}

void FactsForm::row(const zarel::AnswerTerms& values) {
  facts_.append_atom(text_, {zarel::AnswerTerm("answer"), "default", false, values});
  write_piece();
}

void FactsForm::truth(bool holds) {
  text_ += holds ? "answer.\n" : "% The answer is false.\n";
}

// A program of facts has an answer set.
void FactsForm::finish(const RunEnding& ending) {
  if (!ending.asked.has_query && is_first_) text_ += "% There is no answer set.\n";
  flush();
}

}    // namespace

std::unique_ptr<AnswerConsumer> make_facts_form(std::ostream& out,
                                                const FormSettings& /*settings*/) {
  return std::make_unique<FactsForm>(out);
}

}    // namespace workbench
