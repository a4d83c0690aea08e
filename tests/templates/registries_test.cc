// registries_test.cc - what template definitions and invocations are kept in, and its dumps.

#include "model/atom_order.h"
#include "model/model_fixture.h"
#include "support/texts.h"
#include "templates/definitions.h"
#include "templates/established.h"
#include "templates/group_terms.h"
#include "templates/projections.h"
#include "templates/safety_literals.h"

namespace zarel {
namespace {

class TemplateTables : public ModelTest {
 protected:
  TemplateTables() { current_run().output = &output_; }

  std::ostringstream output_;
  const TERMT asterisk_ = TERMT::asterisk(), dollar_ = TERMT::dollar();
};

TEST_F(TemplateTables, DumpDefinitions) {
  lookup_all(defhashmap());
  lookup(defhashmap(), {"t", {}, 2, {}, 0});
  Head head;
  head.add(atom("t", newTERMT("X")));
  Rule fact;
  fact.init(&head, nullptr);
  DEFINITIONATOM made{"t", {}, 2, {}, 0};
  made.formals.add({"p", 2});
  made.formals.add({"q", 1});
  made.rules = {{fact, {}}, {fact, {}}};
  addedDefinition(made);
  addedDefinition({"u", {}, 1, {}, 0});
  lookup_all(defhashmap());
  EXPECT_EQ(output_.str(),
            "Lista di definizioni con la stessa chiave \nt : \n"
            "Lista di definizioni con la stessa chiave \n"
            "t : #template t[p(2), q(1)] (2)\n{\nt(X).\nt(X).\n} \n"
            "Lista di definizioni con la stessa chiave \nu : #template u[] (1)\n{\n\n} \n");
}

TEST_F(TemplateTables, SumUpSignatures) {
  EXPECT_EQ(template_hash(""), 0U);
  EXPECT_EQ(template_hash("ab"), 5U * 97U + 98U);
  EXPECT_EQ(template_hash("\xff"), 0xffffffffU);
  const ATOMT p = atom("p", asterisk_, newTERMT("X"), dollar_, newTERMT("b"), TERMT::integer(7),
                       TERMT::anonymous());
  const ATOMT q = atom("q", asterisk_);
  const std::uint32_t weights = 1 + 3 * 2 + 2 * 3 + 3 * 4 + 3 * 5;
  EXPECT_EQ(signature(invocation("t", Terms{newTERMT("Y")}, p, q, atom("r"))),
            template_hash("t") + template_hash("p") + weights * p.predicate() + template_hash("q") +
                q.predicate() * 2 + template_hash("r"));
}

TEST_F(TemplateTables, BringNestedNamesBack) {
  const ATOMT bound = atom("p_4", asterisk_);
  const auto internal = [&](std::string_view name) {
    return internal_signature(invocation("t", {}, atom(name, asterisk_)), {{"f", bound}});
  };
  EXPECT_EQ(internal("p_4"), signature(invocation("t", {}, atom("p", asterisk_))));
  EXPECT_EQ(internal("h_0"), signature(invocation("t", {}, atom("h_0", asterisk_))));
  EXPECT_EQ(internal("h_1"), internal("h_0"));
}

TEST_F(TemplateTables, ScheduleEachSignatureOnce) {
  const INVOCATIONATOM use = invocation("t", Terms{newTERMT("X")}, atom("p", asterisk_));
  const INVOCATIONATOM other = invocation("t", {}, atom("q", asterisk_));
  for (const INVOCATIONATOM& next : {use, other, use}) record_invocation(next);
  const std::string first = std::to_string(signature(use));
  const std::string second = std::to_string(signature(other));
  lookup(invhashmap(), use);
  print_stack();
  EXPECT_TRUE(schedule().empty());
  EXPECT_EQ(output_.str(),
            joined({"Lista di invocazioni con la stessa chiave(segnatura) ", first,
                    " : t[p(*)] (X)\nt[p(*)] (X)\n\n\n", second, "\n", first, "\n"}));
}

TEST_F(TemplateTables, KeepAnonymousArgumentsWhenModified) {
  TCONJUNCTION<ATOMT> atoms;
  const TERMT anonymous = TERMT::anonymous();
  atoms.add(atom("p", anonymous, newTERMT("X"), asterisk_));
  const ATOMT expected = atom("p", anonymous, newTERMT("X0"), asterisk_);
  EXPECT_TRUE(equal(modifyCon(atoms).at(0), expected));
}

TEST_F(TemplateTables, ReplaceAllButGroupByTerms) {
  const TERMT x = newTERMT("X"), none{TermKind::kAnonymous, 2}, place{TermKind::kAsterisk, 2};
  const std::vector<TERMT> group_by = {x};
  const ATOMT from = atom("p", x, newTERMT("Y"), asterisk_);
  const ATOMT anonymous = soloGroup_by(group_by, from, OtherTerms::kAnonymous);
  EXPECT_TRUE(equal(anonymous, atom("p", x, none, none)));
  EXPECT_TRUE(
      equal(soloGroup_by(group_by, from, OtherTerms::kAsterisk), atom("p", x, place, place)));
  EXPECT_EQ(ATOMT::Predicates().type(anonymous.predicate()), Type::kIdb);
}

TEST_F(TemplateTables, CutSafetyFormsAtTheFirstUnderscore) {
  const ATOMT safe = getAtomSafe(atom("__p_q_1", newTERMT("X"), asterisk_, dollar_));
  EXPECT_EQ(ATOMT::Predicates().name(safe.predicate()), "__p");
  EXPECT_EQ(safe.terms()[1].kind, TermKind::kAnonymous);
  EXPECT_EQ(safe.terms()[2].kind, TermKind::kAnonymous);
  const BindingList binding = {
      {"p", atom("q_1", asterisk_)}};    // for a formal: what it stands for
  const std::vector<ATOMT> bound = returnAtomsSafe(binding, invocation("t", {}, atom("p")));
  EXPECT_EQ(ATOMT::Predicates().name(bound.at(0).predicate()), "q");
}

}    // namespace
}    // namespace zarel
