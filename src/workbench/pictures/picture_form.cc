// picture_form.cc - answer sets as a picture: as Graphviz reads it, or drawn by it.

#include "workbench/answers/forms.h"
#include "workbench/messages/words.h"
#include "workbench/pictures/answer_graph.h"
#include "workbench/pictures/dot_text.h"
#include "workbench/pictures/graphviz.h"
#include "workbench/search/search_failure.h"

namespace workbench {
namespace {

// Keeps what is drawn, and counts the rest.
class PictureForm : public AnswerConsumer {
 public:
  PictureForm(std::ostream& out, const FormSettings& settings)
      : out_(out), settings_(settings), graph_(settings.picture.relations) {}

  void answer_set(AnswerSet& set) override;
  void row(const zarel::AnswerTerms& /*values*/) override {}
  void truth(bool /*holds*/) override {}
  void flush() override {}
  void finish(const RunEnding& ending) override;

 protected:
  virtual std::string picture(const Graph& graph) = 0;
  const FormSettings& settings() const { return settings_; }

 private:
  void say_what_is_left_out(const RunEnding& ending);

  std::ostream& out_;
  const FormSettings& settings_;
  AnswerGraph graph_;
  std::uint64_t sets_ = 0;
};

void PictureForm::answer_set(AnswerSet& set) {
  ++sets_;
  if (sets_ > settings_.picture.sets) return;
  std::string label;
  if (settings_.picture.sets > 1) (label += "answer set ") += std::to_string(sets_);
  graph_.add(set, label);
}

void PictureForm::say_what_is_left_out(const RunEnding& ending) {
  if (ending.asked.has_query) settings_.note("the picture is empty: a query has no answer sets");
  if (sets_ > settings_.picture.sets) {
    const std::uint64_t rest = sets_ - settings_.picture.sets;
    std::string text = counted(rest, "answer set");
    settings_.note((text += rest == 1 ? " is" : " are") += " not drawn; -n K draws the first K");
  }
  if (sets_ == 0) return;
  for (const std::string& name : graph_.never_met()) {
    std::string text("nothing is drawn for ");
    settings_.note((text += name) += ": no relation or attribute of that name was found");
  }
}

void PictureForm::finish(const RunEnding& ending) {
  say_what_is_left_out(ending);
  out_ << picture(graph_.graph()) << std::flush;
}

class DotForm : public PictureForm {
 public:
  using PictureForm::PictureForm;

 private:
  std::string picture(const Graph& graph) override { return dot_text(graph); }
};

class SvgForm : public PictureForm {
 public:
  SvgForm(std::ostream& out, const FormSettings& settings) : PictureForm(out, settings) {
    if (const auto missing = graphviz_missing()) throw SearchFailure{*missing};
  }

 private:
  std::string picture(const Graph& graph) override {
    Drawing drawing = draw(graph, kDrawingSeconds);
    if (drawing.failure) throw SearchFailure{*drawing.failure};
    if (!drawing.left_out.empty()) {
      settings().note("too large to be drawn as a whole: " + drawing.left_out + " are left out");
    }
    return std::move(drawing.svg);
  }
};

}    // namespace

std::unique_ptr<AnswerConsumer> make_dot_form(std::ostream& out, const FormSettings& settings) {
  return std::make_unique<DotForm>(out, settings);
}

std::unique_ptr<AnswerConsumer> make_svg_form(std::ostream& out, const FormSettings& settings) {
  return std::make_unique<SvgForm>(out, settings);
}

}    // namespace workbench
