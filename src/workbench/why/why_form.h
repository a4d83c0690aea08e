#pragma once
// why_form.h - explanations on their way out: as text, as JSON, as a picture.

#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <string>
#include <string_view>

#include "dl/explain/told.h"
#include "workbench/messages/exit_status.h"

namespace workbench {

// Writes each part at once, in the order of the calls: the next one may take long, or never come.
class WhyForm {
 public:
  WhyForm() = default;
  WhyForm(const WhyForm&) = delete;
  WhyForm& operator=(const WhyForm&) = delete;
  virtual ~WhyForm() = default;

  virtual void sentence(std::string_view text) = 0;

  virtual void proof(const dl::ToldProof& proof) = 0;
  virtual void missing(const dl::ToldMissing& missing) = 0;

  // Of all answer sets, or of those that hold what was demanded.
  virtual void outcome(dl::ToldOutcome outcome, bool has_demand) = 0;
  // No answer set holds it, and there are no constraints.
  virtual void kept_out_by_rules() = 0;
  virtual void give_up(const dl::ToldLines& lines, bool has_demand) = 0;
  virtual void give_up_instances(const dl::ToldInstances& instances) = 0;
  virtual void conflict(const dl::ToldLines& lines) = 0;
  virtual void conflict_instances(std::size_t conflict, const dl::ToldInstances& instances) = 0;
  virtual void rules(const dl::ToldLines& lines) = 0;

  virtual void costs(const dl::ToldCosts& costs, bool is_best) = 0;
  virtual void payment(const dl::ToldPayment& payment) = 0;
  virtual void avoidance(const dl::ToldAvoidance& avoidance) = 0;

  virtual void end(ExitStatus status) = 0;
};

// Takes pieces of any length.
using TakePiece = std::function<void(std::string_view)>;

// `depth` as dl::ToldText has it.
std::unique_ptr<WhyForm> make_why_text(TakePiece take, std::uint32_t depth);
// Every line is an object; `question` is the command.
std::unique_ptr<WhyForm> make_why_json(TakePiece take, std::string_view question);
// Proofs alone, as one graph of Graphviz.
std::unique_ptr<WhyForm> make_why_dot(TakePiece take);

}    // namespace workbench
