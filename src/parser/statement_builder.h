#pragma once
// statement_builder.h - what the grammar's actions on statements that are no clauses call: queries
// and directives.

#include "model/clause.h"
#include "parser/integer_bounds.h"
#include "parser/invocation_builder.h"
#include "parser/token_values.h"

namespace zarel {

class StatementBuilder {
 public:
  StatementBuilder(IntegerBounds& bounds, const InvocationBuilder& invocations, WrittenTree& tree)
      : bounds_(bounds), invocations_(invocations), tree_(tree) {}

  // False when the query holds a template invocation, which is reported as a syntax error.
  bool query(Body* body);
  const Body* LocalQuery() const;    // the one that is held, in QUERIES; null without one
  // What is wrong with the number or term is reported at its own place.
  void maxint(Number number, const SourceRange& place);
  void maxint(const TERMT& term, const SourceRange& place);
  void include_line(NameId name);            // #include name
  void include_library_line(NameId name);    // #include <name>
  void declare_namespace(WrittenName prefix, NameId uri);

 private:
  void define_maxint(const TERMT& term, const SourceRange& place);

  IntegerBounds& bounds_;
  const InvocationBuilder& invocations_;
  WrittenTree& tree_;
};

}    // namespace zarel
