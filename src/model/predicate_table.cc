#include "model/predicate_table.h"

#include <string>

#include "model/atom.h"
#include "model/names.h"
#include "model/report.h"
#include "model/run.h"

namespace zarel {
namespace {

using Type = PREDICATE_NAMETS::TYPE;

std::string arity_text(std::string_view name, std::uint32_t first, std::uint32_t now) {
  std::string text(name);
  text.append(", first used with arity ").append(std::to_string(first));
  return text.append(", now seen with arity ").append(std::to_string(now)).append(".");
}

[[noreturn]] void end_for_role(std::string_view name, std::string_view first,
                               std::string_view now) {
  std::string text(name);
  text.append(", first used as ").append(first).append(" predicate, now seen as ");
  report_and_end(Code::kRoleClash, text.append(now).append(" predicate."));
}

}    // namespace

std::uint32_t PredicateTable::enter(NameId name, std::uint32_t arity, Type type) {
  const auto [predicate, is_new] = numbering_.enter(name);
  if (is_new) {
    entries_.push_back({arity, type});
  } else {
    check(predicate, arity, type);
  }
  return predicate;
}

void PredicateTable::check(std::uint32_t predicate, std::uint32_t arity, Type type) {
  Entry& entry = entries_[predicate];
  const bool is_undecided = entry.type == Type::kUnknown;
  if (arity == entry.arity && (type == Type::kUnknown || type == entry.type || is_undecided)) {
    if (is_undecided) entry.type = type;
    return;
  }
  if (type == Type::kBuiltin) return;
  const std::string_view shown = getNameWithoutPrefix(name(predicate));
  if (arity != entry.arity && OptionArityCheck())
    report_and_end(Code::kArityClash, arity_text(shown, entry.arity, arity));
  if (entry.type == Type::kEdb && type == Type::kIdb) end_for_role(shown, "EDB", "IDB");
  if (entry.type == Type::kIdb && type == Type::kEdb) end_for_role(shown, "IDB", "EDB");
}

std::uint32_t PredicateTable::enter_invocation(NameId name, std::uint32_t arity,
                                               std::string_view template_name) {
  const auto [predicate, is_new] = numbering_.enter(name);
  if (is_new) {
    entries_.push_back({arity, Type::kInvocation});
    return predicate;
  }
  Entry& entry = entries_[predicate];
  const bool is_invocation = entry.type == Type::kInvocation;
  if (arity != entry.arity && is_invocation) {
    report(Code::kArityClash, arity_text(template_name, entry.arity, arity));
    if (!current_run().options.skips_faulty_statements) end_run(1);
    return predicate;
  }
  if (arity != entry.arity || !(is_invocation || entry.type == Type::kUnknown)) {
    std::string text = "the name of the template ";
    text.append(template_name).append(" has another use");
    report_and_end(Code::kMarkerClash, text);
  }
  entry.type = Type::kInvocation;
  return predicate;
}

bool PredicateTable::contains(std::string_view name) const {
  return find(name).has_value();
}

std::optional<std::uint32_t> PredicateTable::find(std::string_view name) const {
  const std::optional<NameId> id = names().find(name);
  if (!id) return std::nullopt;
  return numbering_.find(*id);
}

bool OptionArityCheck() {
  return current_run().options.OptionArityCheck;
}

void register_builtins() {
  for (const Builtin& builtin : kBuiltins) {
    ATOMT::Predicates().enter(names().intern(builtin.name), builtin.arity, Type::kBuiltin);
  }
}

}    // namespace zarel
