#pragma once
// found.h - what a search has found, in numbers and in words.

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "output/answer_sink.h"

namespace workbench {

struct Found {
  std::uint64_t answer_sets = 0;
  std::vector<std::pair<std::string, std::string>> costs;    // weight and level of the last one
  std::uint64_t rows = 0;                                    // of a query
  std::optional<bool> truth;                                 // of a query without variables
};

// Counts the answers on their way to the sink that shows them.
class CountingSink : public zarel::AnswerSink {
 public:
  explicit CountingSink(std::unique_ptr<zarel::AnswerSink> shown) : shown_(std::move(shown)) {}

  const Found& found() const { return found_; }

  void begin_answer_set(const zarel::AnswerSetStart& start) override;
  void cost(const zarel::AnswerCost& cost) override;
  void query_row(const zarel::AnswerTerms& values) override;
  void truth_value(bool holds) override;

  void atom(const zarel::AnswerAtom& atom) override { shown_->atom(atom); }
  void foreign_frame_atom(const zarel::AnswerAtom& atom) override {
    shown_->foreign_frame_atom(atom);
  }
  void membership(const zarel::ClassStatement& statement) override {
    shown_->membership(statement);
  }
  void subclass(const zarel::ClassStatement& statement) override { shown_->subclass(statement); }
  void object(const zarel::AnswerObject& object) override { shown_->object(object); }
  void objects(const zarel::FrameMap& frames) override { shown_->objects(frames); }
  void end_answer_set() override { shown_->end_answer_set(); }
  bool flush() override { return shown_->flush(); }

 private:
  std::unique_ptr<zarel::AnswerSink> shown_;
  Found found_;
};

// What was asked, as far as the words depend on it.
struct Asked {
  bool has_query = false;
  bool is_ground = false;    // the query, which then is true or false
  bool is_brave = false;
  bool has_weak_constraints = false;
};

enum class SearchEnd : std::uint8_t {
  kAll,       // there is nothing else
  kEnough,    // there may be more than was asked for
  kCut,       // by a limit or an interrupt
};

struct Judgement {
  std::optional<bool> holds = {};    // a query without variables
  SearchEnd end = SearchEnd::kAll;
  bool is_unproven = false;          // the best answer set so far may not be optimal
  bool has_no_answer_set = false;    // known for a query alone
};

// One line that says what was found and whether it is all.
std::string in_words(const Found& found, const Asked& asked, const Judgement& judgement);

}    // namespace workbench
