// registries_test.cc - what template definitions and invocations are kept in, and its dumps.

#include <sstream>

#include "driver/diagnostics.h"
#include "model/atom_order.h"
#include "templates/definitions.h"
#include "templates/group_terms.h"
#include "templates/inflation.h"
#include "templates/invocations.h"
#include "templates/projections.h"
#include "templates/safety_literals.h"
#include "templates_fixture.h"

namespace zarel {
namespace {

using Type = PREDICATE_NAMETS::TYPE;

class TemplateTables : public testing::Test {
 protected:
  TemplateTables() {
    prepare_tables();
    reset_report_state();
    report_state().output = &output_;
    report_state().errors = &errors_;
  }
  ~TemplateTables() override { reset_report_state(); }

  static ATOMT atom(std::string_view name, const std::vector<TERMT>& terms) {
    return {name, terms, Type::kUnknown};
  }
  static INVOCATIONATOM invocation(std::string_view name, const std::vector<ATOMT>& actuals,
                                   const std::vector<TERMT>& outputs) {
    INVOCATIONATOM made{std::string(name), outputs, {}};
    for (const ATOMT& actual : actuals) made.actuals.add(actual);
    return made;
  }
  static DEFINITIONATOM definition(std::string_view name, const std::vector<FORMALPRED>& formals) {
    DEFINITIONATOM made{std::string(name), {}, 2, {}, 0};
    for (const FORMALPRED& formal : formals) made.formals.add(formal);
    return made;
  }

  const TERMT asterisk_ = TERMT::asterisk();
  const TERMT dollar_ = TERMT::dollar();
  std::ostringstream output_;
  std::ostringstream errors_;
};

TEST_F(TemplateTables, HashTextsByFives) {
  EXPECT_EQ(template_hash(""), 0U);
  EXPECT_EQ(template_hash("ab"), 5U * 97U + 98U);
  EXPECT_EQ(template_hash("\xff"), 0xffffffffU);
}

TEST_F(TemplateTables, DumpOneDefinition) {
  DEFINITIONATOM made = definition("t", {{"p", 2}, {"q", 1}});
  Head head;
  head.add(atom("t", {newTERMT("X")}));
  Rule fact;
  fact.init(&head, nullptr);
  made.rules.emplace_back(fact, SourceLocation{});
  made.rules.emplace_back(fact, SourceLocation{});
  addedDefinition(made);
  lookup(defhashmap(), definition("t", {}));
  EXPECT_EQ(output_.str(),
            "Lista di definizioni con la stessa chiave \n"
            "t : #template t[p(2), q(1)] (2)\n{\nt(X).\nt(X).\n} \n");
}

TEST_F(TemplateTables, DumpADefinitionThatIsNotThere) {
  lookup(defhashmap(), definition("t", {}));
  EXPECT_EQ(output_.str(), "Lista di definizioni con la stessa chiave \nt : \n");
}

TEST_F(TemplateTables, DumpEveryDefinition) {
  lookup_all(defhashmap());
  EXPECT_EQ(output_.str(), "");
  addedDefinition(definition("t", {}));
  addedDefinition(definition("u", {}));
  lookup_all(defhashmap());
  EXPECT_EQ(output_.str(),
            "Lista di definizioni con la stessa chiave \nt : #template t[] (2)\n{\n\n} \n"
            "Lista di definizioni con la stessa chiave \nu : #template u[] (2)\n{\n\n} \n");
}

TEST_F(TemplateTables, RefuseASecondDefinition) {
  addedDefinition(definition("t", {{"p", 2}}));
  EXPECT_THROW(addedDefinition(definition("t", {})), RunEnd);
  EXPECT_EQ(errors_.str(), "Template t already defined.\n");
  EXPECT_EQ(defhashmap().find("t")->formals.size(), 1U);
}

TEST_F(TemplateTables, SumUpSignatures) {
  const ATOMT p = atom("p", {asterisk_, newTERMT("X"), dollar_, newTERMT("b"), TERMT::integer(7),
                             TERMT::anonymous()});
  const ATOMT q = atom("q", {asterisk_});
  const std::uint32_t weights = 1 + 3 * 2 + 2 * 3 + 3 * 4 + 3 * 5;
  EXPECT_EQ(signature(invocation("t", {p, q, atom("r", {})}, {newTERMT("Y")})),
            template_hash("t") + template_hash("p") + weights * p.predicate() + template_hash("q") +
                q.predicate() * 2 + template_hash("r"));
}

TEST_F(TemplateTables, BringNestedNamesBack) {
  const ATOMT p = atom("p", {asterisk_});
  const ATOMT bound = atom("p_4", {asterisk_});
  const ATOMT first = atom("h_0", {asterisk_});
  const ATOMT second = atom("h_1", {asterisk_});
  const BindingList binding = {{"f", bound}};
  EXPECT_EQ(internal_signature(invocation("t", {bound}, {}), binding),
            signature(invocation("t", {p}, {})));
  EXPECT_EQ(internal_signature(invocation("t", {first}, {}), binding),
            signature(invocation("t", {first}, {})));
  EXPECT_EQ(internal_signature(invocation("t", {second}, {}), binding),
            signature(invocation("t", {first}, {})));
}

TEST_F(TemplateTables, ScheduleEachSignatureOnce) {
  const INVOCATIONATOM use = invocation("t", {atom("p", {asterisk_})}, {newTERMT("X")});
  const INVOCATIONATOM other = invocation("t", {atom("q", {asterisk_})}, {});
  record_invocation(use);
  record_invocation(other);
  record_invocation(use);
  EXPECT_EQ(schedule(), (std::vector<std::uint32_t>{signature(use), signature(other)}));
  EXPECT_EQ(invhashmap().under(signature(use)).size(), 2U);
  lookup(invhashmap(), use);
  EXPECT_EQ(output_.str(), "Lista di invocazioni con la stessa chiave(segnatura) " +
                               std::to_string(signature(use)) +
                               " : t[p(*)] (X)\nt[p(*)] (X)\n\n\n");
}

TEST_F(TemplateTables, ShowTheScheduleFromItsEnd) {
  schedule() = {7, 4000000000U};
  print_stack();
  EXPECT_EQ(output_.str(), "4000000000\n7\n");
  EXPECT_TRUE(schedule().empty());
}

TEST_F(TemplateTables, PutOrdinaryParametersBeforeOutputs) {
  const TERMT x = newTERMT("X");
  const TERMT b = newTERMT("b");
  const std::vector<TERMT> terms = getAuxTerms(
      invocation("t", {atom("p", {x, asterisk_, b}), atom("q", {}), atom("r", {dollar_, x})}, {b}));
  EXPECT_EQ(terms, (std::vector<TERMT>{x, b, x, b}));
}

TEST_F(TemplateTables, CountFreshVariablesOverAllActuals) {
  const INVOCATIONATOM use = invocation(
      "t", {atom("p", {newTERMT("X"), asterisk_}), atom("q", {newTERMT("b"), dollar_})}, {});
  EXPECT_EQ(getGroupBy(use), (std::vector<TERMT>{newTERMT("X0"), newTERMT("C_const_1")}));
}

TEST_F(TemplateTables, KeepAnonymousArgumentsWhenModified) {
  TCONJUNCTION<ATOMT> atoms;
  const TERMT anonymous = TERMT::anonymous();
  atoms.add(atom("p", {anonymous, newTERMT("X"), asterisk_}));
  const ATOMT expected = atom("p", {anonymous, newTERMT("X0"), asterisk_});
  EXPECT_EQ(modifyCon(atoms).at(0) != expected, 0);
}

TEST_F(TemplateTables, ReplaceAllButGroupByTerms) {
  const TERMT x = newTERMT("X");
  const std::vector<TERMT> group_by = {x};
  const ATOMT from = atom("p", {x, newTERMT("Y"), asterisk_});
  const ATOMT anonymous = soloGroup_by(group_by, from, OtherTerms::kAnonymous);
  const TERMT none{TermKind::kAnonymous, 2};
  const TERMT place{TermKind::kAsterisk, 2};
  EXPECT_EQ(anonymous != atom("p", {x, none, none}), 0);
  EXPECT_EQ(soloGroup_by(group_by, from, OtherTerms::kAsterisk) != atom("p", {x, place, place}), 0);
  EXPECT_EQ(ATOMT::Predicates().type(anonymous.predicate()), Type::kIdb);
}

TEST_F(TemplateTables, CutSafetyFormsAtTheFirstUnderscore) {
  const ATOMT safe = getAtomSafe(atom("__p_q_1", {newTERMT("X"), asterisk_, dollar_}));
  std::ostringstream text;
  text << ATOMT::Predicates().name(safe.predicate());
  EXPECT_EQ(text.str(), "__p");
  EXPECT_EQ(safe.terms()[1].kind, TermKind::kAnonymous);
  EXPECT_EQ(safe.terms()[2].kind, TermKind::kAnonymous);
}

TEST_F(TemplateTables, TakeAnActualNamedAsAFormalForWhatThatIsBoundTo) {
  const BindingList binding = {{"p", atom("q_1", {asterisk_})}};
  const std::vector<ATOMT> safe = returnAtomsSafe(binding, invocation("t", {atom("p", {})}, {}));
  EXPECT_EQ(ATOMT::Predicates().name(safe.at(0).predicate()), "q");
}

}    // namespace
}    // namespace zarel
