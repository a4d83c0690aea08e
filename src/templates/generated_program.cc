#include "templates/generated_program.h"

namespace zarel {

void add_generated(CLAUSET::Payload payload, const SourceLocation& location) {
  CLAUSES().emplace_back(std::move(payload), location);
  ++nclause();
}

void add_generated_rule(const ATOMT& head, const Body& body, const SourceLocation& location) {
  Head heads;
  heads.add(head);
  Rule rule;
  rule.init(&heads, &body);
  add_generated(std::move(rule), location);
}

}    // namespace zarel
