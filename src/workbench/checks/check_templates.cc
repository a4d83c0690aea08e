#include "workbench/checks/check_templates.h"

namespace workbench {

using zarel::NameId;
using zarel::WrittenKind;
using zarel::WrittenNode;
using zarel::WrittenStatement;

void Templates::note_invoked(const WrittenStatement& clause, std::vector<NameId>& names) {
  for (const WrittenNode& node : clause.nodes) {
    if (node.kind == WrittenKind::kInvocation) names.push_back(node.name);
  }
}

void Templates::look_at(const WrittenStatement& statement) {
  if (statement.kind != WrittenStatement::Kind::kTemplate) {
    note_invoked(statement, invoked_);
    has_program_ = true;
    return;
  }
  Definition& definition = definitions_.emplace_back(
      Definition{statement.name, {statement.span.file, statement.name_place}, {}});
  for (const WrittenStatement& clause : statement.clauses) note_invoked(clause, definition.invoked);
  report_unread(statement);
}

void Templates::report_unread(const WrittenStatement& definition) {
  std::unordered_set<NameId> read;
  for (const WrittenStatement& clause : definition.clauses) {
    for (const WrittenNode& node : clause.nodes) {
      if (node.kind == WrittenKind::kAtom || node.kind == WrittenKind::kActual) {
        read.insert(node.name);
      }
    }
  }
  for (const zarel::WrittenPredicate& formal : definition.formals) {
    if (read.contains(formal.name)) continue;
    Message& message = context_.tell("unread-formal", context_.place(definition, formal.place),
                                     "the template " + context_.text(definition.name) +
                                         " does not read " + context_.text(formal.name));
    message.label = "no clause of the template uses it";
    message.help = "leave it out, or read it in a body";
  }
}

// A file of templates alone is a library, and one of which a template is used may have others.
void Templates::report() {
  if (!has_program_) return;
  std::unordered_map<NameId, const Definition*> by_name;
  for (const Definition& definition : definitions_) by_name[definition.name] = &definition;
  std::unordered_set<NameId> used;
  std::unordered_set<std::uint32_t> used_files;
  while (!invoked_.empty()) {
    const NameId name = invoked_.back();
    invoked_.pop_back();
    const auto found = by_name.find(name);
    if (found == by_name.end() || !used.insert(name).second) continue;
    used_files.insert(found->second->place.file);
    invoked_.insert(invoked_.end(), found->second->invoked.begin(), found->second->invoked.end());
  }
  for (const Definition& definition : definitions_) {
    if (used_files.contains(definition.place.file)) continue;
    Message& message =
        context_.tell("unused-template", context_.place(definition.place),
                      "the template " + context_.text(definition.name) + " is never used");
    message.help = "invoke it in a body, or leave it out";
  }
}

}    // namespace workbench
