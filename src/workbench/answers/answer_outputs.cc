#include "workbench/answers/answer_outputs.h"

#include "workbench/answers/terminal_width.h"

namespace workbench {
namespace {

// Those that text is wrapped to; 0 where it is not.
std::size_t columns_of(Wrapping wrapping, int descriptor) {
  constexpr std::size_t kUsual = 80;
  if (wrapping == Wrapping::kNever) return 0;
  const std::size_t width = terminal_width(descriptor);
  return width == 0 && wrapping == Wrapping::kAlways ? kUsual : width;
}

}    // namespace

AnswerOutputs::AnswerOutputs(const std::vector<Destination>& destinations,
                             const FormSettings& settings, int standard) {
  for (const Destination& destination : destinations) {
    Output output{destination.file, nullptr, nullptr, nullptr};
    if (is_folder(destination.file)) {
      output.folder = std::make_unique<OutputFolder>(destination.file);
      output.form = make_csv_form(*output.folder, settings);    // no other form has several files
      outputs_.push_back(std::move(output));
      continue;
    }
    if (!destination.file.empty()) {
      output.file = std::make_unique<OutputFile>(destination.file);
    } else if (!standard_) {
      standard_ = std::make_unique<AnswerOutput>(standard);
      standard_stream_.rdbuf(standard_.get());
    }
    std::ostream& stream = output.file ? output.file->stream() : standard_stream_;
    const std::size_t columns = columns_of(settings.wrapping, output.file ? -1 : standard);
    output.form = destination.form == "text" && columns != 0 && !settings.counts_only
                      ? make_wrapped_text_form(stream, columns)
                      : make_form(destination.form, stream, settings);
    outputs_.push_back(std::move(output));
  }
}

AnswerOutputs::~AnswerOutputs() = default;

std::optional<AnswerOutputs::Failure> AnswerOutputs::failure() const {
  if (standard_ && standard_->error() != 0) return Failure{{}, standard_->error()};
  for (const Output& output : outputs_) {
    if (output.file && output.file->error() != 0) return Failure{output.name, output.file->error()};
    if (!output.folder) continue;
    if (const auto [path, error] = output.folder->failure(); error != 0)
      return Failure{path, error};
  }
  return std::nullopt;
}

std::optional<AnswerOutputs::Failure> AnswerOutputs::put_files() {
  for (const Output& output : outputs_) {
    if (output.file && output.file->put() != 0) return Failure{output.name, output.file->error()};
    if (!output.folder) continue;
    if (const auto [path, error] = output.folder->put(); error != 0) return Failure{path, error};
  }
  return std::nullopt;
}

void AnswerOutputs::answer_set(AnswerSet& set) {
  for (const Output& output : outputs_) output.form->answer_set(set);
}

void AnswerOutputs::row(const zarel::AnswerTerms& values) {
  for (const Output& output : outputs_) output.form->row(values);
}

void AnswerOutputs::truth(bool holds) {
  for (const Output& output : outputs_) output.form->truth(holds);
}

void AnswerOutputs::flush() {
  for (const Output& output : outputs_) output.form->flush();
}

void AnswerOutputs::finish(const RunEnding& ending) {
  for (const Output& output : outputs_) output.form->finish(ending);
}

}    // namespace workbench
