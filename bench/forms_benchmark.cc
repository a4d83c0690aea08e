// forms_benchmark.cc - answer sets in memory, written in each form; and read from the solver.

#include <benchmark/benchmark.h>
#include <streambuf>
#include <string>

#include "sample_text.h"
#include "workbench/answers/answer_text_reader.h"
#include "workbench/answers/forms.h"

namespace workbench {
namespace {

// Counts what is written to it.
class Counting : public std::streambuf {
 public:
  std::int64_t bytes() const { return bytes_; }

 protected:
  std::streamsize xsputn(const char* /*text*/, std::streamsize size) override {
    bytes_ += size;
    return size;
  }

 private:
  std::int64_t bytes_ = 0;
};

class Kept : public AnswerConsumer {
 public:
  explicit Kept(AnswerConsumer* next = nullptr) : next_(next) {}
  void pass_to(AnswerConsumer& next) { next_ = &next; }
  void answer_set(AnswerSet& set) override {
    if (next_ != nullptr) next_->answer_set(set);
  }
  void row(const zarel::AnswerTerms& /*values*/) override {}
  void truth(bool /*holds*/) override {}
  void flush() override {}
  void finish(const RunEnding& /*ending*/) override {}

 private:
  AnswerConsumer* next_;
};

// Calls the form again and again with the answer set that is read.
class Repeated : public Kept {
 public:
  Repeated(benchmark::State& state, AnswerConsumer& form) : state_(state), form_(form) {}
  void answer_set(AnswerSet& set) override {
    for ([[maybe_unused]] auto _ : state_) form_.answer_set(set);
    form_.flush();
  }

 private:
  benchmark::State& state_;
  AnswerConsumer& form_;
};

void writes(benchmark::State& state, const std::string& name, const std::string& answers) {
  Counting written;
  std::ostream out(&written);
  const FormSettings settings;
  const std::unique_ptr<AnswerConsumer> form = make_form(name, out, settings);
  Repeated repeated(state, *form);
  AnswerTextReader reader(repeated, nullptr);
  if (!reader.read(answers)) state.SkipWithError("answers were refused");
  reader.finish();
  state.SetBytesProcessed(written.bytes());    // of the output
}

std::string relation_text(std::size_t atoms) {
  std::string text("{");
  for (std::size_t i = 0; i < atoms; ++i) {
    if (i != 0) text += ", ";
    ((text += "a_4(road,default,town") += std::to_string(i % 100'000)) += ",\"Street ";
    ((text += std::to_string(i)) += "\",") += std::to_string(i) += ')';
  }
  return text += "}\n";
}

constexpr std::size_t kAtoms = 1'000'000;

void writes_atoms(benchmark::State& state, const std::string& form) {
  writes(state, form, relation_text(kAtoms));
}
BENCHMARK_CAPTURE(writes_atoms, text, "text");
BENCHMARK_CAPTURE(writes_atoms, lines, "lines");
BENCHMARK_CAPTURE(writes_atoms, json, "json");
BENCHMARK_CAPTURE(writes_atoms, csv, "csv");
BENCHMARK_CAPTURE(writes_atoms, facts, "facts");

void writes_frames(benchmark::State& state, const std::string& form) {
  writes(state, form, zarel::frame_answer_set_text(kAtoms));
}
BENCHMARK_CAPTURE(writes_frames, json, "json");
BENCHMARK_CAPTURE(writes_frames, csv, "csv");
BENCHMARK_CAPTURE(writes_frames, facts, "facts");

void reads_exactly(benchmark::State& state) {
  const std::string answers = relation_text(kAtoms);
  Kept consumer;
  for ([[maybe_unused]] auto _ : state) {
    AnswerTextReader reader(consumer, nullptr);
    if (!reader.read(answers)) state.SkipWithError("answers were refused");
    reader.finish();
  }
  state.SetBytesProcessed(state.iterations() * static_cast<std::int64_t>(answers.size()));
}
BENCHMARK(reads_exactly);

}    // namespace
}    // namespace workbench
