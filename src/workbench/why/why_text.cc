// why_text.cc - explanations as text.

#include <utility>

#include "dl/explain/told_text.h"
#include "workbench/why/why_form.h"

namespace workbench {
namespace {

class TextForm : public WhyForm {
 public:
  TextForm(TakePiece take, std::uint32_t depth) : text_(std::move(take), depth) {}

  void sentence(std::string_view text) override { text_.sentence(text); }
  void proof(const dl::ToldProof& proof) override { text_.proof(proof); }
  void missing(const dl::ToldMissing& missing) override { text_.missing(missing); }
  void outcome(dl::ToldOutcome outcome, bool has_demand) override {
    text_.outcome(outcome, has_demand);
  }
  void kept_out_by_rules() override { text_.sentence("No answer set holds it."); }
  void give_up(const dl::ToldLines& lines, bool has_demand) override {
    text_.give_up(lines, has_demand);
  }
  void give_up_instances(const dl::ToldInstances& instances) override {
    text_.give_up_instances(instances);
  }
  void conflict(const dl::ToldLines& lines) override { text_.conflict(lines); }
  void conflict_instances(std::size_t /*conflict*/, const dl::ToldInstances& instances) override {
    text_.conflict_instances(instances);
  }
  void rules(const dl::ToldLines& lines) override { text_.rules(lines); }
  void costs(const dl::ToldCosts& costs, bool is_best) override { text_.costs(costs, is_best); }
  void payment(const dl::ToldPayment& payment) override { text_.payment(payment); }
  void avoidance(const dl::ToldAvoidance& avoidance) override { text_.avoidance(avoidance); }
  void end(ExitStatus /*status*/) override {}

 private:
  dl::ToldText text_;
};

}    // namespace

std::unique_ptr<WhyForm> make_why_text(TakePiece take, std::uint32_t depth) {
  return std::make_unique<TextForm>(std::move(take), depth);
}

}    // namespace workbench
