#pragma once
// answer_consumer.h - what gets the answers of a run: forms write them, others pass them on.

#include "output/answer_terms.h"
#include "workbench/answers/answer_set.h"
#include "workbench/answers/found.h"
#include "workbench/messages/exit_status.h"

namespace workbench {

// How the run ended, for forms that tell.
struct RunEnding {
  ExitStatus status;
  double seconds;    // since it began
  const Found& found;
  const Asked& asked;
  const Judgement& judgement;
};

// Gets every answer as soon as the solver has it: answer sets whole, with their costs.
class AnswerConsumer {
 public:
  AnswerConsumer() = default;
  AnswerConsumer(const AnswerConsumer&) = delete;
  AnswerConsumer& operator=(const AnswerConsumer&) = delete;
  virtual ~AnswerConsumer() = default;

  virtual void answer_set(AnswerSet& set) = 0;               // may be changed
  virtual void row(const zarel::AnswerTerms& values) = 0;    // of a query, in the order of its
                                                             // variables
  virtual void truth(bool holds) = 0;                        // of a query without variables

  // No answers are there at the moment: what is known should go out. Where nobody takes it any
  // more, the stream tells.
  virtual void flush() = 0;
  // The last call: behind a search that did not fail.
  virtual void finish(const RunEnding& ending) = 0;
};

// Passes everything on.
class AnswerStage : public AnswerConsumer {
 public:
  explicit AnswerStage(AnswerConsumer& next) : next_(next) {}

  void answer_set(AnswerSet& set) override { next_.answer_set(set); }
  void row(const zarel::AnswerTerms& values) override { next_.row(values); }
  void truth(bool holds) override { next_.truth(holds); }
  void flush() override { next_.flush(); }
  void finish(const RunEnding& ending) override { next_.finish(ending); }

 protected:
  AnswerConsumer& next() { return next_; }

 private:
  AnswerConsumer& next_;
};

}    // namespace workbench
