// The predicate table, and atoms of every kind.

#include "model/atom.h"

#include "model/established.h"
#include "model_fixture.h"

namespace zarel {
namespace {

using AtomTest = ModelTest;

TEST_F(AtomTest, BuiltinsHoldTheFirstTenNumbers) {
  const PredicateTable& table = ATOMT::Predicates();
  std::string shown;
  for (std::uint32_t code = 0; code < kBuiltinCount; ++code) {
    shown.append(table.name(code)).append("/").append(std::to_string(table.arity(code))) += ' ';
    EXPECT_EQ(table.type(code), Type::kBuiltin);
    EXPECT_TRUE(builtin_name[code] == table.name(code) && builtin_arity[code] == table.arity(code));
  }
  EXPECT_EQ(shown, "==/2 !=/2 </2 >/2 <=/2 >=/2 #int/1 #succ/2 +/3 */3 ");
  EXPECT_EQ(atom("p").predicate(), kBuiltinCount);
}

// An atom to enter; of type kInvocation, an invocation of the template of that name.
struct Entry {
  std::string_view name;
  std::size_t arity;
  Type type = Type::kUnknown;

  void enter() const {
    INVOCATIONATOM of = invocation(name, Terms{});
    for (std::size_t i = 0; i < arity; ++i) of.actuals.add(newBuiltin(BUILTIN::kEqual, {}));
    const bool is_invocation = type == Type::kInvocation;
    static_cast<void>(is_invocation ? ATOMT(of) : ATOMT(name, Terms(arity, num(1)), type));
  }
};

// What is entered, with or without the check of arities, and the message with which entering the
// last one ends the run; none where it goes on.
struct Entries {
  bool is_checked;
  std::vector<Entry> entries;
  std::optional<std::string_view> message;
};

constexpr Type kEdb = Type::kEdb, kIdb = Type::kIdb, kUse = Type::kInvocation;
#define ROLES(first, now) "p, first used as " first " predicate, now seen as " now " predicate.\n"
#define ARITIES(name, first, now) \
  name ", first used with arity " first ", now seen with arity " now ".\n"
constexpr auto kGoesOn = std::nullopt;
constexpr bool kOn = true, kOff = false;
const Entries kEntries[] = {
    {kOff, {{"p", 1}, {"p", 2}}, kGoesOn},
    {kOn, {{"p", 1}, {"p", 2}}, ARITIES("p", "1", "2")},
    {kOff, {{"p", 1, kEdb}, {"p", 1, kIdb}}, ROLES("EDB", "IDB")},
    {kOn, {{"p", 1, kIdb}, {"p", 1, kEdb}}, ROLES("IDB", "EDB")},
    {kOff, {{"p", 1, kEdb}, {"p", 2, kIdb}}, ROLES("EDB", "IDB")},
    {kOn, {{"p", 1, kEdb}, {"p", 2, kIdb}}, ARITIES("p", "1", "2")},
    {kOn, {{"p", 1, kIdb}, {"p", 1}}, kGoesOn},
    {kOn, {{"p", 1, kEdb}, {"p", 2, Type::kBuiltin}}, kGoesOn},
    {kOn, {{"p", 1, Type::kBuiltin}, {"p", 1, kIdb}}, kGoesOn},
    {kOff, {{"p", 1}, {"p", 1, kIdb}, {"p", 1, kEdb}}, ROLES("IDB", "EDB")},
    {kOff, {{"p", 1}, {"p", 2, kIdb}, {"p", 1, kEdb}}, kGoesOn},    // another arity settles nothing
    {kOn, {{"#12p", 1}, {"#12p", 2}}, ARITIES("p", "1", "2")},
    {kOn, {{"-p", 1}, {"-p", 2}}, ARITIES("-p", "1", "2")},
    {kOn, {{"t", 1, kUse}, {"t", 1, kUse}}, kGoesOn},
    {kOff, {{"t", 1, kUse}, {"t", 0, kUse}}, ARITIES("t", "1", "0")},
    {kOn, {{"@t", 0, kIdb}, {"t", 0, kUse}}, ""},
    {kOn, {{"@t", 1}, {"t", 0, kUse}}, ""},
    {kOff, {{"@t", 0}, {"t", 0, kUse}, {"t", 1, kUse}}, ARITIES("t", "0", "1")},
};

TEST_F(AtomTest, APredicateThatClashesWithItsFirstUseEndsTheRun) {
  for (const Entries& test : kEntries) {
    const auto& [is_checked, entries, message] = test;
    SCOPED_TRACE(&test - kEntries);
    begin({is_checked});
    errors_.str("");
    for (std::size_t i = 0; i + 1 < entries.size(); ++i) entries[i].enter();
    const std::optional<int> status = end_of([&test] { test.entries.back().enter(); });
    EXPECT_EQ(status, message ? std::optional(1) : std::nullopt);
    EXPECT_EQ(errors_.str(), message.value_or(""));
  }
}

TEST_F(AtomTest, AsterisksAreCountedExceptInBuiltinsAndInvocations) {
  const Terms terms{TERMT::asterisk(), num(1), TERMT::asterisk()};
  EXPECT_EQ(ATOMT("p", terms, Type::kUnknown).asterisk_count(), 2U);
  current_run().options.OptionArityCheck = true;    // which builtins do not ask
  EXPECT_EQ(newBuiltin(BUILTIN::kEqual, terms).asterisk_count(), 0U);
  EXPECT_EQ(ATOMT(invocation("t", terms)).asterisk_count(), 0U);
}

TEST_F(AtomTest, EveryKindHasAPredicateOfItsOwnType) {
  const auto expect = [](const ATOMT& of, std::string_view name, Type type, std::size_t arity,
                         std::size_t terms) {
    EXPECT_EQ(ATOMT::Predicates().name(of.predicate()), name);
    EXPECT_EQ(ATOMT::Predicates().type(of.predicate()), type) << name;
    EXPECT_EQ(ATOMT::Predicates().arity(of.predicate()), arity) << name;
    EXPECT_EQ(of.terms().size(), terms) << name;
  };
  const ATOMT negated = newNegativeATOMT("p", Terms{num(1)});
  expect(negated, "-p", Type::kUnknown, 1, 1);
  EXPECT_EQ(NegativeAtoms(), std::set<std::uint32_t>{negated.predicate()});
  EXPECT_TRUE(isTrueNegated(negated) && isTrueNegated(atom("a-b")) && !isTrueNegated(atom("p")));
  expect(count(num(1), {}, false), "#count", Type::kAggregate, 0, 0);
  expect(ATOMT::external("f", Terms{num(1), num(2)}, Terms{num(3)}), "f", Type::kExternal, 1, 1);
  expect(ATOMT(invocation("t", Terms{num(1)}, atom("p"), atom("q"))), "@t", Type::kInvocation, 2,
         1);
}

}    // namespace
}    // namespace zarel
