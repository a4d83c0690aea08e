// why_json.cc - explanations as JSON, an object a line.

#include <nlohmann/json.hpp>
#include <utility>

#include "workbench/why/why_form.h"

namespace workbench {
namespace {

using Json = nlohmann::ordered_json;

Json json_of(const dl::ToldPlace& place) {
  Json json{{"file", place.file}, {"line", place.line}, {"column", place.column}};
  if (place.end_line != 0) {
    json["end_line"] = place.end_line;
    json["end_column"] = place.end_column;
  }
  if (!place.used.empty()) json["template"] = place.used;
  for (const dl::ToldPlace& use : place.uses) json["used_at"].push_back(json_of(use));
  return json;
}

Json json_of(const dl::ToldValues& values) {
  Json json = Json::object();
  for (const auto& [variable, value] : values) json[variable] = value;
  return json;
}

void add(Json& json, const dl::ToldStatement& statement) {
  if (!statement.place.file.empty()) json["place"] = json_of(statement.place);
  if (!statement.text.empty()) json["statement"] = statement.text;
}

Json json_of(const dl::ToldStatement& statement) {
  Json json = Json::object();
  add(json, statement);
  return json;
}

Json json_of(const dl::ToldItem& item) {
  switch (item.kind) {
    case dl::ToldItem::Kind::kAtom:
      if (item.node) return {{"node", *item.node}};
      return {{"atom", item.text}, {"explained", false}};
    case dl::ToldItem::Kind::kNegation:
      return {{"not", item.text.substr(item.text.starts_with("not ") ? 4 : 0)}};
    case dl::ToldItem::Kind::kComparison:
      return {{"compare", item.text}};
    case dl::ToldItem::Kind::kAggregate:
      break;
  }
  Json json{{"aggregate", item.text}};
  if (!item.value.empty()) json["value"] = item.value;
  json["elements"] = Json::array();
  for (const dl::ToldItem::Element& element : item.elements) {
    json["elements"].push_back({{"tuple", element.tuple}, {"nodes", element.nodes}});
  }
  if (item.unneeded != 0) json["unneeded"] = item.unneeded;
  return json;
}

std::string_view word_of(dl::ToldKind kind) {
  switch (kind) {
    case dl::ToldKind::kFact:
      return "fact";
    case dl::ToldKind::kRule:
      return "rule";
    case dl::ToldKind::kChoice:
      return "choice";
    case dl::ToldKind::kCases:
      return "cases";
    case dl::ToldKind::kAssumed:
      return "assumed";
    case dl::ToldKind::kNotExplained:
      break;
  }
  return "not explained";
}

Json json_of(const dl::ToldNode& node, const dl::ToldProof& proof) {
  Json json{{"kind", word_of(node.kind)}, {"atom", node.atom}, {"key", node.key}};
  if (node.statement) add(json, proof.statements[*node.statement]);
  if (!node.with.empty()) json["with"] = json_of(node.with);
  if (node.is_cut) json["cut"] = true;
  for (const dl::ToldItem& item : node.items) json["items"].push_back(json_of(item));
  if (!node.instead_of.empty()) json["instead_of"] = node.instead_of;
  for (const dl::ToldNode::Case& each : node.cases) {
    json["cases"].push_back({{"assumed", each.assumed}, {"node", each.node}});
  }
  return json;
}

Json json_of(const dl::ToldFailure::Literal& literal) {
  Json json{{"text", literal.text}};
  if (!literal.value.empty()) json["value"] = literal.value;
  if (!literal.because.empty()) json["because"] = literal.because;
  return json;
}

Json json_of(const dl::ToldFailure& failure) {
  using State = dl::ToldFailure::Literal::State;
  Json json = json_of(failure.statement);
  json["with"] = json_of(failure.with);
  Json holds = Json::array();
  Json fails = Json::array();
  Json open = Json::array();
  for (const dl::ToldFailure::Literal& literal : failure.literals) {
    Json& list = literal.state == State::kHolds   ? holds
                 : literal.state == State::kFails ? fails
                                                  : open;
    list.push_back(json_of(literal));
  }
  json["holds"] = std::move(holds);
  json["fails"] = std::move(fails);
  if (!open.empty()) json["open"] = std::move(open);
  if (!failure.other_heads.empty()) json["head_is_true_by"] = failure.other_heads;
  json["bindings"] = failure.bindings;
  if (failure.was_cut) json["bindings_cut"] = true;
  return json;
}

Json json_of(const dl::ToldInstance& instance) {
  Json json = Json::object();
  if (instance.statement) {
    json = json_of(*instance.statement);
    json["with"] = json_of(instance.with);
  } else {
    json["clash"] = instance.clash;
  }
  if (instance.times != 1) json["times"] = instance.times;
  return json;
}

void add(Json& json, const dl::ToldInstances& instances) {
  json["instances"] = Json::array();
  for (const dl::ToldInstance& each : instances.instances) {
    json["instances"].push_back(json_of(each));
  }
  json["proven"] = instances.is_proven;
}

void add(Json& json, const dl::ToldLines& lines) {
  json["lines"] = Json::array();
  for (const dl::ToldStatement& each : lines.statements) json["lines"].push_back(json_of(each));
  if (!lines.clashes.empty()) json["clashes"] = lines.clashes;
  json["proven"] = lines.is_proven;
}

Json json_of(const dl::ToldCosts& costs) {
  Json json = Json::array();
  for (const dl::ToldCost& cost : costs) {
    json.push_back({{"level", cost.level}, {"cost", cost.cost}});
  }
  return json;
}

Json json_of(const dl::ToldPayment& payment) {
  Json json = json_of(payment.instance);
  json["level"] = payment.level;
  json["weight"] = payment.weight;
  return json;
}

class JsonForm : public WhyForm {
 public:
  JsonForm(TakePiece take, std::string_view question)
      : take_(std::move(take)), question_(question) {}

  void sentence(std::string_view text) override { write(begun("note"), {{"text", text}}); }

  void proof(const dl::ToldProof& proof) override {
    Json json = begun("proof");
    json["roots"] = proof.roots;
    json["nodes"] = Json::array();
    for (std::size_t i = 0; i < proof.nodes.size(); ++i) {
      Json node{{"id", i}};
      node.update(json_of(proof.nodes[i], proof));
      json["nodes"].push_back(std::move(node));
    }
    write(std::move(json));
  }

  void missing(const dl::ToldMissing& missing) override {
    Json json = begun("missing");
    json["atom"] = missing.atom;
    json["key"] = missing.key;
    json["rules"] = Json::array();
    for (const dl::ToldFailure& each : missing.rules) json["rules"].push_back(json_of(each));
    json["other_rules"] = Json::array();
    for (const dl::ToldStatement& each : missing.other_rules) {
      json["other_rules"].push_back(json_of(each));
    }
    json["facts"] = missing.has_other_facts;
    if (!missing.similar.empty()) json["mean"] = missing.similar;
    if (!missing.contrary.empty()) json["contrary"] = missing.contrary;
    write(std::move(json));
  }

  void outcome(dl::ToldOutcome outcome, bool has_demand) override {
    const char* word = "unknown";
    if (outcome == dl::ToldOutcome::kNone) word = "answer set";
    if (outcome == dl::ToldOutcome::kConstraints) word = "constraints";
    if (outcome == dl::ToldOutcome::kRules) word = "rules";
    write(begun("outcome"), {{"with_atom", has_demand}, {"outcome", word}});
  }
  void kept_out_by_rules() override { outcome(dl::ToldOutcome::kRules, true); }
  void give_up(const dl::ToldLines& lines, bool has_demand) override {
    write_lines("give_up", lines, {{"with_atom", has_demand}});
  }
  void give_up_instances(const dl::ToldInstances& instances) override {
    write_instances("give_up_instances", instances, Json::object());
  }
  void conflict(const dl::ToldLines& lines) override {
    write_lines("conflict", lines, {{"conflict", ++conflicts_}});
  }
  void conflict_instances(std::size_t conflict, const dl::ToldInstances& instances) override {
    write_instances("conflict_instances", instances, {{"conflict", conflict + 1}});
  }
  void rules(const dl::ToldLines& lines) override { write_lines("rules", lines, Json::object()); }

  void costs(const dl::ToldCosts& costs, bool is_best) override {
    write(begun("costs"), {{"levels", json_of(costs)}, {"proven", is_best}});
  }
  void payment(const dl::ToldPayment& payment) override {
    Json json = begun("payment");
    json["payment"] = ++payments_;
    json.update(json_of(payment));
    write(std::move(json));
  }
  void avoidance(const dl::ToldAvoidance& avoidance) override {
    using Outcome = dl::ToldAvoidance::Outcome;
    Json json = begun("avoidance");
    json["payment"] = payments_;
    const char* word = "unknown";
    if (avoidance.outcome == Outcome::kSameCost) word = "same cost";
    if (avoidance.outcome == Outcome::kDearer) word = "dearer";
    if (avoidance.outcome == Outcome::kUnproven) word = "unproven";
    if (avoidance.outcome == Outcome::kNever) word = "never";
    json["outcome"] = word;
    if (!avoidance.costs.empty()) json["levels"] = json_of(avoidance.costs);
    json["then"] = Json::array();
    for (const dl::ToldPayment& each : avoidance.instead) json["then"].push_back(json_of(each));
    if (avoidance.others != 0) json["others"] = avoidance.others;
    write(std::move(json));
  }

  void end(ExitStatus status) override {
    write(begun("end"), {{"status", static_cast<int>(status)}});
  }

 private:
  Json begun(std::string_view part) const { return {{"question", question_}, {"part", part}}; }

  void write(Json json, const Json& more = Json::object()) {
    json.update(more);
    take_(json.dump(-1, ' ', false, Json::error_handler_t::replace) += '\n');
  }
  void write_lines(std::string_view part, const dl::ToldLines& lines, const Json& more) {
    Json json = begun(part);
    json.update(more);
    add(json, lines);
    write(std::move(json));
  }
  void write_instances(std::string_view part, const dl::ToldInstances& instances,
                       const Json& more) {
    Json json = begun(part);
    json.update(more);
    add(json, instances);
    write(std::move(json));
  }

  TakePiece take_;
  std::string question_;
  std::uint64_t conflicts_ = 0;
  std::uint64_t payments_ = 0;
};

}    // namespace

std::unique_ptr<WhyForm> make_why_json(TakePiece take, std::string_view question) {
  return std::make_unique<JsonForm>(std::move(take), question);
}

}    // namespace workbench
