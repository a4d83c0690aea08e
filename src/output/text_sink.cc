// text_sink.cc - answers as the user writes atoms and frames.

#include <string>

#include "model/generic_encoding.h"
#include "model/run.h"
#include "output/display_settings.h"
#include "output/filters.h"
#include "output/frame_map.h"
#include "output/framespace_display.h"
#include "output/result_writer.h"
#include "output/sinks.h"

namespace zarel {
namespace {

class TextSink : public AnswerSink {
 public:
  TextSink(std::ostream& out, Run& run)
      : writer_(out),
        settings_(run.parts.get<DisplaySettings>()),
        namespaces_(run.namespaces),
        shortens_(settings_.address && run.prefix_was_used) {}

  void begin_answer_set(const AnswerSetStart& start) override;
  void atom(const AnswerAtom& atom) override;
  void foreign_frame_atom(const AnswerAtom& atom) override { begin_atom(atom.is_negated); }
  void membership(const ClassStatement& statement) override { add_class(statement, ":"); }
  void subclass(const ClassStatement& statement) override { add_class(statement, "::"); }
  void object(const AnswerObject& /*object*/) override {}    // see objects
  void objects(const FrameMap& frames) override;
  void end_answer_set() override;
  void cost(const AnswerCost& cost) override;
  void query_row(const AnswerTerms& values) override { write_line(values.text()); }
  void truth_value(bool holds) override { write_line(holds ? "true" : "false"); }
  bool flush() override { return writer_.write_out(); }

 private:
  void begin_atom(bool is_negated);
  void add_class(const ClassStatement& statement, std::string_view sign);
  void write_line(std::string_view text);
  void finish_item();

  ResultWriter writer_;
  const DisplaySettings& settings_;
  const NamespaceTable& namespaces_;
  bool shortens_;    // full URIs to prefix:name

  std::string item_;    // as it will be printed
  std::size_t brace_end_ = 0;
  bool has_atoms_ = false;
  bool is_best_model_ = false;    // whose cost is to come
};

void TextSink::begin_answer_set(const AnswerSetStart& start) {
  item_.clear();    // an error may have cut one off
  is_best_model_ = start.is_best_model();
  if (is_best_model_) item_.append(start.title).append(" ").append(start.subject).append(": ");
  item_ += '{';
  brace_end_ = item_.size();
  has_atoms_ = false;
}

// Everything in front of an atom that is shown.
void TextSink::begin_atom(bool is_negated) {
  if (has_atoms_) item_ += ", ";
  has_atoms_ = true;
  if (is_negated) item_ += '-';
}

void TextSink::atom(const AnswerAtom& atom) {
  const bool has_arguments = !atom.arguments.is_empty();
  if (has_arguments && atom.space == kServiceSpace) return;
  if (!passFilters(settings_, atom.relation.text(), atom.is_negated)) return;
  begin_atom(atom.is_negated);
  item_ += atom.relation.text();
  if (has_arguments) {
    item_ += '(';
    if (shortens_) {
      item_ += returnAddress(namespaces_, atom.arguments.text());
    } else {
      item_ += atom.arguments.text();
    }
    item_ += ')';
  }
  item_ += getFramespace(settings_, atom.space);
}

// Unlike plain atoms, frames never show the default space, whatever the settings say.
void TextSink::add_class(const ClassStatement& statement, std::string_view sign) {
  begin_atom(statement.is_negated);
  item_.append(statement.object.text()).append(sign).append(statement.class_name.text());
  if (statement.space != kDefaultSpace) item_.append("@").append(statement.space);
}

void TextSink::objects(const FrameMap& frames) {
  if (item_.size() > brace_end_) item_ += ", ";    // an atom may have been an empty text
  frames.stringMolecules(item_);
}

void TextSink::end_answer_set() {
  item_ += '}';
  if (!is_best_model_) finish_item();
}

void TextSink::cost(const AnswerCost& cost) {
  if (cost.is_first()) {
    item_.append("\n").append(cost.title);
    item_.append(" ([").append(cost.weight_name).append(":").append(cost.level_name);
    item_.append("]): <[").append(cost.weight).append(":").append(cost.level).append("]>");
  } else {
    item_.append("\"[").append(cost.weight).append(":").append(cost.level).append("]\"");
  }
  finish_item();
}

void TextSink::write_line(std::string_view text) {
  item_ = text;
  finish_item();
}

void TextSink::finish_item() {
  item_ += '\n';
  writer_.add(item_);
  item_.clear();
}

}    // namespace

std::unique_ptr<AnswerSink> make_text_sink(std::ostream& out, Run& run) {
  return std::make_unique<TextSink>(out, run);
}

}    // namespace zarel
