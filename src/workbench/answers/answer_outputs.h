#pragma once
// answer_outputs.h - the places that the answers of one run go to, each in its own form.

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "workbench/answers/answer_options.h"
#include "workbench/answers/forms.h"
#include "workbench/answers/output_file.h"

namespace workbench {

class AnswerOutputs : public AnswerConsumer {
 public:
  // The settings must outlive this; `standard` is the descriptor of what has no file.
  AnswerOutputs(const std::vector<Destination>& destinations, const FormSettings& settings,
                int standard);
  ~AnswerOutputs() override;

  // The descriptor that somebody reads answers from as they come; -1 for none.
  int descriptor() const { return standard_ ? standard_->descriptor() : -1; }
  const std::ostream* standard_stream() const { return standard_ ? &standard_stream_ : nullptr; }
  void note_closed() { standard_->note_closed(); }    // nobody reads them any more

  struct Failure {
    std::string file;    // empty: standard output
    int error;           // as errno has it
  };
  std::optional<Failure> failure() const;    // the first one
  // Behind finish(): puts the files in their places.
  std::optional<Failure> put_files();

  void answer_set(AnswerSet& set) override;
  void row(const zarel::AnswerTerms& values) override;
  void truth(bool holds) override;
  void flush() override;
  void finish(const RunEnding& ending) override;

 private:
  struct Output {
    std::string name;
    std::unique_ptr<OutputFile> file;        // this, or
    std::unique_ptr<OutputFolder> folder;    // this, or standard output
    std::unique_ptr<AnswerConsumer> form;
  };

  std::unique_ptr<AnswerOutput> standard_;
  std::ostream standard_stream_{nullptr};
  std::vector<Output> outputs_;
};

}    // namespace workbench
