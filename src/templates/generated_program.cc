#include "templates/generated_program.h"

#include "model/report.h"

namespace zarel {

void add_generated(CLAUSET::Payload payload) {
  CLAUSES().emplace_back(std::move(payload), work().source());
  ++nclause();
}

void add_generated_rule(const ATOMT& head, const Body& body) {
  add_generated(rule_of(head, body));
}

}    // namespace zarel
