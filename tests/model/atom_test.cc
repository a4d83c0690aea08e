// The predicate table, and atoms of every kind.

#include "model/atom.h"

#include "model/atom_order.h"
#include "model_fixture.h"

namespace zarel {
namespace {

using AtomTest = ModelTest;

TEST_F(AtomTest, BuiltinsHoldTheFirstTenNumbers) {
  struct Builtin {
    std::string_view name;
    std::uint32_t arity;
  };
  constexpr Builtin kBuiltins[] = {{"==", 2}, {"!=", 2},   {"<", 2},     {">", 2}, {"<=", 2},
                                   {">=", 2}, {"#int", 1}, {"#succ", 2}, {"+", 3}, {"*", 3}};
  std::uint32_t code = 0;
  for (const Builtin& builtin : kBuiltins) {
    EXPECT_EQ(ATOMT::Predicates().name(code), builtin.name);
    EXPECT_EQ(ATOMT::Predicates().arity(code), builtin.arity);
    EXPECT_EQ(ATOMT::Predicates().type(code), Type::kBuiltin);
    ++code;
  }
  EXPECT_EQ(atom("p").predicate(), 10U);
  EXPECT_EQ(atom("q").predicate(), 11U);
  EXPECT_EQ(atom("p").predicate(), 10U);
}

const Terms kOne{num(1)};
const Terms kTwo{num(1), num(2)};

// An atom to enter; of type kInvocation, an invocation of the template of that name.
struct Entry {
  std::string_view name;
  std::size_t arity;
  Type type = Type::kUnknown;

  void enter() const {
    if (type != Type::kInvocation) {
      typed_atom(name, Terms(arity, num(1)), type);
      return;
    }
    INVOCATIONATOM of = invocation(name, list());
    for (std::size_t i = 0; i < arity; ++i) of.actuals.add(newBuiltin(BUILTIN::kEqual, {}));
    static_cast<void>(ATOMT(of));
  }
};

// What is entered, and what entering the last one comes to.
enum class Arities { kUnchecked, kChecked };
enum class Outcome { kGoesOn, kEnds };
struct Entries {
  std::string_view name;
  Arities arities;
  std::vector<Entry> entries;
  Outcome outcome;
  std::string_view message = "";
  friend void PrintTo(const Entries& test, std::ostream* out) { *out << test.name; }
};
class EnteringAtoms : public ModelTable<Entries> {};
TEST_P(EnteringAtoms, EndsAsExpected) {
  set_arity_check(GetParam().arities == Arities::kChecked);
  const std::vector<Entry>& entries = GetParam().entries;
  for (std::size_t i = 0; i + 1 < entries.size(); ++i) entries[i].enter();
  const auto status = end_of([&] { entries.back().enter(); });
  EXPECT_EQ(status, GetParam().outcome == Outcome::kEnds ? std::optional(1) : std::nullopt);
  EXPECT_EQ(errors_.str(), GetParam().message);
}

constexpr Arities kOff = Arities::kUnchecked, kOn = Arities::kChecked;
constexpr Outcome kGoesOn = Outcome::kGoesOn, kEnds = Outcome::kEnds;
constexpr Type kEdb = Type::kEdb, kIdb = Type::kIdb, kUse = Type::kInvocation;
constexpr std::string_view kEdbThenIdb =
    "p, first used as EDB predicate, now seen as IDB predicate.\n";
constexpr std::string_view kIdbThenEdb =
    "p, first used as IDB predicate, now seen as EDB predicate.\n";
constexpr std::string_view kArity = "p, first used with arity 1, now seen with arity 2.\n";

const Entries kEntries[] = {
    {"another_arity_unchecked", kOff, {{"p", 1}, {"p", 2}}, kGoesOn},
    {"another_arity", kOn, {{"p", 1}, {"p", 2}}, kEnds, kArity},
    {"same_arity", kOn, {{"p", 2}, {"p", 2}}, kGoesOn},
    {"edb_then_idb", kOff, {{"p", 1, kEdb}, {"p", 1, kIdb}}, kEnds, kEdbThenIdb},
    {"idb_then_edb", kOn, {{"p", 1, kIdb}, {"p", 1, kEdb}}, kEnds, kIdbThenEdb},
    {"role_and_arity", kOff, {{"p", 1, kEdb}, {"p", 2, kIdb}}, kEnds, kEdbThenIdb},
    {"arity_before_role", kOn, {{"p", 1, kEdb}, {"p", 2, kIdb}}, kEnds, kArity},
    {"idb_then_undecided", kOn, {{"p", 1, kIdb}, {"p", 1}}, kGoesOn},
    {"as_builtin_never", kOn, {{"p", 1, kEdb}, {"p", 2, Type::kBuiltin}}, kGoesOn},
    {"builtin_then_idb", kOn, {{"p", 1, Type::kBuiltin}, {"p", 1, kIdb}}, kGoesOn},
    {"settled", kOff, {{"p", 1}, {"p", 1, kIdb}, {"p", 1, kEdb}}, kEnds, kIdbThenEdb},
    {"not_settled_by_another_arity", kOff, {{"p", 1}, {"p", 2, kIdb}, {"p", 1, kEdb}}, kGoesOn},
    {"shown_without_prefix", kOn, {{"#12p", 1}, {"#12p", 2}}, kEnds, kArity},
    {"shown_with_strong_negation",
     kOn,
     {{"-p", 1}, {"-p", 2}},
     kEnds,
     "-p, first used with arity 1, now seen with arity 2.\n"},
    {"invocations_alike", kOn, {{"t", 1, kUse}, {"t", 1, kUse}}, kGoesOn},
    {"invocation_count_even_unchecked",
     kOff,
     {{"t", 1, kUse}, {"t", 0, kUse}},
     kEnds,
     "t, first used with arity 1, now seen with arity 0.\n"},
    {"invocation_of_a_predicate", kOn, {{"@t", 0, kIdb}, {"t", 0, kUse}}, kEnds},
    {"invocation_count_of_undecided", kOn, {{"@t", 1}, {"t", 0, kUse}}, kEnds},
    {"invocation_settles",
     kOff,
     {{"@t", 0}, {"t", 0, kUse}, {"t", 1, kUse}},
     kEnds,
     "t, first used with arity 0, now seen with arity 1.\n"},
};
INSTANTIATE_TEST_SUITE_P(Cases, EnteringAtoms, testing::ValuesIn(kEntries), case_name);

TEST_F(AtomTest, ThePredicateTableKeepsTheFirstArity) {
  const std::uint32_t p = atom("p", num(1)).predicate();
  EXPECT_EQ(typed_atom("p", kTwo, Type::kIdb).terms().size(), 2U);
  EXPECT_EQ(ATOMT::Predicates().arity(p), 1U);
  EXPECT_EQ(ATOMT::Predicates().type(p), Type::kUnknown);
  typed_atom("p", kOne, Type::kIdb);
  EXPECT_EQ(ATOMT::Predicates().type(p), Type::kIdb);
  EXPECT_EQ(ATOMT::Predicates().find("p"), p);
  EXPECT_FALSE(ATOMT::Predicates().contains("q"));
  newTERMT("q");    // a constant is no predicate
  EXPECT_FALSE(ATOMT::Predicates().contains("q"));
}

TEST_F(AtomTest, AsterisksAreCountedExceptInBuiltinsAndInvocations) {
  const Terms terms{TERMT::asterisk(), num(1), TERMT::asterisk()};
  EXPECT_EQ(typed_atom("p", terms, Type::kUnknown).asterisk_count(), 2U);
  EXPECT_EQ(atom("q").asterisk_count(), 0U);
  EXPECT_EQ(newBuiltin(BUILTIN::kPlus, terms).asterisk_count(), 0U);
  EXPECT_EQ(ATOMT(invocation("t", terms)).asterisk_count(), 0U);
}

TEST_F(AtomTest, BuiltinsAskNoTable) {
  const std::uint32_t before = ATOMT::Predicates().size();
  set_arity_check(true);
  EXPECT_EQ(newBuiltin(BUILTIN::kTimes, kOne).predicate(), 9U);
  EXPECT_EQ(newBuiltin(BUILTIN::kEqual, {}).terms().size(), 0U);
  EXPECT_EQ(ATOMT::Predicates().size(), before);
}

TEST_F(AtomTest, StrongNegationIsAPredicateOfItsOwn) {
  const ATOMT negated = newNegativeATOMT("p", kOne);
  const ATOMT hyphen = atom("a-b");
  EXPECT_EQ(ATOMT::Predicates().name(negated.predicate()), "-p");
  EXPECT_EQ(ATOMT::Predicates().type(negated.predicate()), Type::kUnknown);
  EXPECT_EQ(NegativeAtoms(), std::set<std::uint32_t>{negated.predicate()});
  EXPECT_TRUE(isTrueNegated(negated));
  EXPECT_TRUE(isTrueNegated(hyphen));
  EXPECT_FALSE(isTrueNegated(atom("p")));
}

TEST_F(AtomTest, AggregatesOfOneFunctionShareAPredicate) {
  const ATOMT p = count_of("X", body(no(atom("p")), yes(atom("q"))), strict(num(1)));
  const ATOMT q = count_of("X", body(yes(atom("q"))), inclusive(num(1)));
  EXPECT_EQ(p.predicate(), q.predicate());
  EXPECT_NE(p != q, 0);
  EXPECT_EQ(ATOMT::Predicates().name(p.predicate()), "#count");
  EXPECT_EQ(ATOMT::Predicates().arity(p.predicate()), 0U);
  EXPECT_EQ(ATOMT::Predicates().type(p.predicate()), Type::kAggregate);
  EXPECT_TRUE(p.terms().empty());
  EXPECT_FALSE(p.aggregate().body.elements()[0].is_negated);
  EXPECT_TRUE(p.aggregate().body.elements()[1].is_negated);
}

TEST_F(AtomTest, AnInvocationAtomHoldsCopiesOfWhatItStandsFor) {
  INVOCATIONATOM of = invocation("t", kTwo, atom("p", num(1)), atom("q"));
  const ATOMT marker(of);
  of.name = "other";
  of.outputTerms.clear();
  of.actuals.clear();
  EXPECT_EQ(ATOMT::Predicates().name(marker.predicate()), "@t");
  EXPECT_EQ(ATOMT::Predicates().arity(marker.predicate()), 2U);
  EXPECT_EQ(ATOMT::Predicates().type(marker.predicate()), Type::kInvocation);
  EXPECT_EQ(names().spelling(marker.invocation().name), "t");
  EXPECT_EQ(marker.invocation().actuals.size(), 2U);
  EXPECT_EQ(marker.terms().size(), 2U);
}

TEST_F(AtomTest, ExternalAtomsHoldTwoLists) {
  const ATOMT external = ATOMT::external("f", kTwo, kOne);
  EXPECT_EQ(ATOMT::Predicates().type(external.predicate()), Type::kExternal);
  EXPECT_EQ(external.external_atom().bracketed.size(), 2U);
  EXPECT_EQ(external.terms().size(), 1U);
}

}    // namespace
}    // namespace zarel
