// why_dot.cc - proofs as a graph: a box for each atom, shared by all that rest on it.

#include <unordered_map>
#include <utility>

#include "workbench/pictures/dot_text.h"
#include "workbench/why/why_form.h"

namespace workbench {
namespace {

std::string shown_place(const dl::ToldPlace& place) {
  return place.file + ":" + std::to_string(place.line);
}

class DotForm : public WhyForm {
 public:
  explicit DotForm(TakePiece take) : take_(std::move(take)) {}

  void sentence(std::string_view /*text*/) override {}

  void proof(const dl::ToldProof& proof) override {
    std::vector<std::uint32_t> boxes;
    for (const dl::ToldNode& node : proof.nodes) boxes.push_back(box_of(node, proof));
    for (std::uint32_t i = 0; i < proof.nodes.size(); ++i) {
      const dl::ToldNode& node = proof.nodes[i];
      for (const dl::ToldItem& item : node.items) {
        if (item.node) graph_.arrows.push_back({boxes[i], boxes[*item.node]});
        for (const dl::ToldItem::Element& element : item.elements) {
          for (const std::uint32_t each : element.nodes) {
            graph_.arrows.push_back({boxes[i], boxes[each], element.tuple});
          }
        }
      }
      for (const dl::ToldNode::Case& each : node.cases) {
        graph_.arrows.push_back(
            {boxes[i], boxes[each.node], "if " + each.assumed, Arrow::Kind::kDashed});
      }
    }
  }

  void missing(const dl::ToldMissing& /*missing*/) override {}
  void outcome(dl::ToldOutcome /*outcome*/, bool /*has_demand*/) override {}
  void kept_out_by_rules() override {}
  void give_up(const dl::ToldLines& /*lines*/, bool /*has_demand*/) override {}
  void give_up_instances(const dl::ToldInstances& /*instances*/) override {}
  void conflict(const dl::ToldLines& /*lines*/) override {}
  void conflict_instances(std::size_t /*conflict*/,
                          const dl::ToldInstances& /*instances*/) override {}
  void rules(const dl::ToldLines& /*lines*/) override {}
  void costs(const dl::ToldCosts& /*costs*/, bool /*is_best*/) override {}
  void payment(const dl::ToldPayment& /*payment*/) override {}
  void avoidance(const dl::ToldAvoidance& /*avoidance*/) override {}

  void end(ExitStatus /*status*/) override {
    if (!graph_.boxes.empty()) take_(dot_text(graph_));
  }

 private:
  std::uint32_t box_of(const dl::ToldNode& node, const dl::ToldProof& proof) {
    Box box{node.atom};
    const auto add = [&box](std::string text) { box.lines.push_back({std::move(text)}); };
    if (node.statement) {
      const dl::ToldStatement& statement = proof.statements[*node.statement];
      const bool is_fact = node.kind == dl::ToldKind::kFact;
      add((is_fact ? "fact, " : "") + shown_place(statement.place));
      if (!is_fact) add(statement.text);
    }
    for (const auto& [variable, value] : node.with) {
      std::string line = variable;
      add((line += " = ") += value);
    }
    for (const dl::ToldItem& item : node.items) {
      if (item.kind == dl::ToldItem::Kind::kAtom && item.node) continue;
      add(item.value.empty() ? item.text : item.text + "  = " + item.value);
    }
    for (const std::string& other : node.instead_of) add("instead of " + other);
    if (node.kind == dl::ToldKind::kNotExplained) add("not explained");
    if (node.kind == dl::ToldKind::kAssumed) add("assumed");
    if (node.is_cut) add("...");
    return graph_.add(std::move(box));
  }

  TakePiece take_;
  Graph graph_;
};

}    // namespace

std::unique_ptr<WhyForm> make_why_dot(TakePiece take) {
  return std::make_unique<DotForm>(std::move(take));
}

}    // namespace workbench
