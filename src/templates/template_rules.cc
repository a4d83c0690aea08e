#include "templates/template_rules.h"

#include "model/run.h"

namespace zarel {

bool TemplateRules::is_rewritten(const ATOMT& atom) {
  return atom.payload() == ATOMT::Payload::kTerms &&
         ATOMT::Predicates().type(atom.predicate()) != PREDICATE_NAMETS::TYPE::kBuiltin &&
         is_of_template(atom);
}

// The search goes on where the last one for this name ended: names that were taken stay taken.
int TemplateRules::free_label(const std::string& local) {
  int& label = labels_[local];
  while (is_taken(local_name(local, label))) ++label;
  return label;
}

TemplateRules& template_rules() {
  return current_run().options.links_templates ? linked_rules() : established_rules();
}

}    // namespace zarel
