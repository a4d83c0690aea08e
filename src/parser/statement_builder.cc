#include "parser/statement_builder.h"

#include <string>

#include "functions/function_terms.h"
#include "model/namespaces.h"
#include "model/printer.h"
#include "model/run.h"
#include "parser/reading_scope.h"
#include "parser/syntax_error.h"
#include "templates/query_rewriting.h"

namespace zarel {
namespace {

void say_that_query_is_replaced(const Body& old_query, const Body& new_query) {
  Text line("Query ");
  append_list(line, new_query, ", ");
  line += " replaces ";
  append_list(line, old_query, ", ");
  line += ".\n";
  Run& run = current_run();
  report({Code::kReplacedQuery,
          work_place(),
          line.str(),
          {{place_of(run.query_places.back()), "the query that it replaces"}}});
}

}    // namespace

// Only one query is kept. The variables that follow are numbered from 0 again.
bool StatementBuilder::query(Body* body) {
  if (const auto& invocation = invocations_.first()) {
    const ReadingScope at_invocation(work(), &*invocation);
    report_syntax_error();
    return current_run().options.skips_faulty_statements;
  }
  if (tree_.is_open()) tree_.statement(WrittenStatement::Kind::kQuery);
  if (hasFunctionTerm()) rewriteQuery(*body);
  if (const Body* const held = LocalQuery()) say_that_query_is_replaced(*held, *body);
  QUERIES().assign(1, *body);
  current_run().query_places.assign(1, work().source().location);
  LocalVariables().reset();
  return true;
}

const Body* StatementBuilder::LocalQuery() const {
  return QUERIES().empty() ? nullptr : &QUERIES().back();
}

// The directive's own number is no integer of the program: no earlier bound holds for it.
void StatementBuilder::maxint(Number number, const SourceRange& place) {
  if (tree_.is_open()) {
    {
      const ReadingScope at_number(work(), &place);
      tree_.leaf(WrittenKind::kInteger, {}, number.value);
    }
    tree_.statement(WrittenStatement::Kind::kMaxint);
  }
  define_maxint(TERMT::integer(static_cast<std::int32_t>(number.value)), place);
}

void StatementBuilder::maxint(const TERMT& term, const SourceRange& place) {
  if (tree_.is_open()) tree_.statement(WrittenStatement::Kind::kMaxint);
  define_maxint(term, place);
}

void StatementBuilder::define_maxint(const TERMT& term, const SourceRange& place) {
  if (bounds_.define(term, place)) CLAUSES().emplace_back(term, work().source());
}

void StatementBuilder::include_line(NameId name) {
  if (tree_.is_open()) tree_.statement(WrittenStatement::Kind::kInclude, name);
  std::string line = "#include ";
  Includes().push_back(line.append(names().spelling(name)));
  current_run().include_places.push_back(work().source().location);
}

void StatementBuilder::include_library_line(NameId name) {
  if (tree_.is_open()) tree_.statement(WrittenStatement::Kind::kIncludeLibrary, name);
  std::string line = "#include <";
  Includes().push_back(line.append(names().spelling(name)).append(">"));
  current_run().include_places.push_back(work().source().location);
}

void StatementBuilder::declare_namespace(WrittenName prefix, NameId uri) {
  if (tree_.is_open()) {
    tree_.statement(WrittenStatement::Kind::kNamespace, prefix.id, prefix.place);
  }
  std::string quoted(names().spelling(uri));
  if (quoted.front() != '"') quoted.insert(0, 1, '"').push_back('"');
  if (!vectorName().declare(names().spelling(prefix.id), quoted)) {
    const ReadingScope at_prefix(work(), prefix.place);
    report(Code::kRedefinedPrefix, "Cannot define more namespace with the same name");
  }
}

}    // namespace zarel
