// Names, their numbers, and terms.

#include "model/term.h"

#include "model/function_term_table.h"
#include "model_fixture.h"

namespace zarel {
namespace {

using TermTest = ModelTest;

TEST(NameTableTest, KeepsAHundredThousandNamesApartWhileItGrows) {
  constexpr std::uint32_t kNames = 100'000;
  NameTable table;
  const std::string_view early = table.spelling(table.intern("name0"));
  for (std::uint32_t i = 1; i < kNames; ++i) {
    ASSERT_EQ(to_index(table.intern("name" + std::to_string(i))), i);
  }
  EXPECT_EQ(table.size(), kNames);
  EXPECT_EQ(early, "name0");
  EXPECT_EQ(early.data(), table.spelling(NameId{0}).data());
  for (std::uint32_t i = 0; i < kNames; ++i) {
    const std::string name = "name" + std::to_string(i);
    ASSERT_EQ(table.spelling(NameId{i}), name);
    ASSERT_EQ(table.find(name), NameId{i});
    ASSERT_EQ(table.intern(name), NameId{i});
  }
  EXPECT_EQ(table.find("name100000"), std::nullopt);
}

TEST(NameTableTest, CopiesTheSpellingAndTellsPrefixesApart) {
  NameTable table;
  EXPECT_EQ(table.find(""), std::nullopt);
  std::string text = "abc";
  const NameId whole = table.intern(text);
  const NameId part = table.intern(std::string_view(text).substr(0, 2));
  const NameId empty = table.intern("");
  text = "xyz";
  EXPECT_EQ(table.spelling(whole), "abc");
  EXPECT_EQ(table.spelling(part), "ab");
  EXPECT_EQ(table.spelling(empty), "");
  table.clear();
  EXPECT_EQ(table.find("abc"), std::nullopt);
  EXPECT_EQ(table.intern("ab"), NameId{0});
}

TEST(NameNumberingTest, NumbersNamesInTheOrderOfTheirFirstEntry) {
  NameNumbering numbering;
  EXPECT_EQ(numbering.find(NameId{7}), std::nullopt);
  EXPECT_EQ(numbering.enter(NameId{7}).number, 0U);
  EXPECT_TRUE(numbering.enter(NameId{2}).is_new);
  EXPECT_FALSE(numbering.enter(NameId{7}).is_new);
  EXPECT_EQ(numbering.find(NameId{2}), 1U);
  EXPECT_EQ(numbering.find(NameId{3}), std::nullopt);
  EXPECT_EQ(numbering.name(0), NameId{7});
  EXPECT_EQ(numbering.size(), 2U);
}

struct Kind {
  std::string_view name, text;
  TermKind kind;
  friend void PrintTo(const Kind& test, std::ostream* out) { *out << test.name; }
};
class TermKindOf : public ModelTable<Kind> {};
TEST_P(TermKindOf, FollowsTheFirstCharacter) {
  EXPECT_EQ(newTERMT(GetParam().text).kind, GetParam().kind);
}
constexpr Kind kKinds[] = {
    {"lower_case", "foo", TermKind::kConstant},   {"digit_first", "1x", TermKind::kConstant},
    {"quoted", "\"Ab\"", TermKind::kConstant},    {"underscore", "_A", TermKind::kConstant},
    {"upper_case", "X", TermKind::kVariable},     {"upper_case_word", "Xyz", TermKind::kVariable},
    {"first_letter", "Ax", TermKind::kVariable},  {"last_letter", "Zx", TermKind::kVariable},
    {"behind_letters", "[", TermKind::kConstant}, {"above_ascii", "\xc3\x84", TermKind::kConstant},
};
INSTANTIATE_TEST_SUITE_P(Cases, TermKindOf, testing::ValuesIn(kKinds), case_name);

TEST_F(TermTest, ConstantsAreNumberedInFirstSeenOrder) {
  EXPECT_EQ(newTERMT("b").value, 0);
  EXPECT_EQ(newTERMT("a").value, 1);
  EXPECT_EQ(newTERMT("X").value, 0);
  EXPECT_EQ(newTERMT("b").value, 0);
  EXPECT_EQ(TERMT::Constants().size(), 2U);
  EXPECT_EQ(names().spelling(TERMT::Constants().name(1)), "a");
}

TEST_F(TermTest, AVariableKeepsItsNumberAndAnonymousOnesTakeOneEach) {
  EXPECT_EQ(newTERMT("X"), TERMT::variable(0));
  const TERMT first = TERMT::anonymous();
  EXPECT_EQ(first.value, 1);
  EXPECT_FALSE(first == TERMT::anonymous());
  EXPECT_EQ(newTERMT("Y"), TERMT::variable(3));
  EXPECT_EQ(newTERMT("X"), TERMT::variable(0));
  EXPECT_EQ(getVariableName(0), "X");
  EXPECT_EQ(getVariableName(3), "Y");
  EXPECT_EQ(end_of([] { getVariableName(1); }), 1);
}

TEST_F(TermTest, AfterAResetAVariablePrintsUnderTheOldestNameOfItsNumber) {
  newTERMT("X");
  newTERMT("Y");
  LocalVariables().reset();
  EXPECT_EQ(newTERMT("Z").value, 0);
  EXPECT_EQ(newTERMT("X").value, 1);
  EXPECT_EQ(newTERMT("Y").value, 2);
  EXPECT_EQ(newTERMT("W").value, 3);
  EXPECT_EQ(getVariableName(0), "X");
  EXPECT_EQ(getVariableName(1), "Y");
  EXPECT_EQ(getVariableName(3), "W");
  EXPECT_EQ(Variables().size(), 4U);
  // Y was registered with another number, so no registered name had this one.
  EXPECT_EQ(end_of([] { getVariableName(2); }), 1);
  EXPECT_EQ(errors_.str(), "");
}

TEST_F(TermTest, AnUnregisteredNumberEndsTheRunWithoutAWord) {
  EXPECT_EQ(end_of([] { getVariableName(0); }), 1);
  newTERMT("X");
  EXPECT_EQ(end_of([] { getVariableName(4'000'000'000U); }), 1);
  EXPECT_EQ(errors_.str(), "");
}

TEST_F(TermTest, EqualityLooksAtValuesExceptOfAbsentTerms) {
  EXPECT_EQ((TERMT{TermKind::kAbsent, 1}), (TERMT{TermKind::kAbsent, 2}));
  EXPECT_FALSE((TERMT{TermKind::kAsterisk, 0} == TERMT{TermKind::kAsterisk, 2}));
  EXPECT_FALSE(num(0) == newTERMT("a"));
}

TEST_F(TermTest, ArgumentListsHoldTheTermsThatAreGiven) {
  const TERMT x = num(1), y = num(2), z = num(3);
  EXPECT_EQ(newTERMTS(x, &y, &z), (list(x, y, z)));
  EXPECT_EQ(newTERMTS(x, &y, nullptr), (list(x, y)));
  EXPECT_EQ(newTERMTS(x, nullptr, nullptr), list(x));
}

TEST_F(TermTest, PatternsAreFilledWithActualTerms) {
  const TERMT star = TERMT::asterisk(), a = newTERMT("a");
  const Terms actual{num(1), num(2), num(3)};
  EXPECT_EQ(getTerms(actual, list(star, a, TERMT::dollar(), star)),
            (list(num(1), a, num(2), num(3))));
  EXPECT_EQ(getTerms(actual, list(star, TERMT::absent())),
            (list(num(1), TERMT::absent(), num(2), num(3))));
  EXPECT_EQ(getTerms(list(), list()), list());
}

TEST_F(TermTest, VariablesOfAFunctionTermComeInOrderWithRepeats) {
  const TERMT x = newTERMT("X"), y = newTERMT("Y"), f = function_term("F"), g = function_term("G");
  FTermTable().enter(g.index(), {names().intern("g"), {y, x, num(1)}});
  FTermTable().enter(f.index(), {names().intern("f"), {x, g, newTERMT("a"), x}});
  Terms found{num(7)};
  variablesInFunctionTerm(found, f);
  EXPECT_EQ(found, (list(num(7), x, y, x, x)));
}

TEST_F(TermTest, FunctionTermsMayBeNestedDeeperThanTheStack) {
  constexpr std::uint32_t kDepth = 1'000'000;
  for (std::uint32_t i = 0; i < kDepth; ++i) {
    const auto inner = static_cast<std::int32_t>(i) + 1;
    FTermTable().enter(i, {names().intern("f"), {TERMT{TermKind::kFunctionTerm, inner}}});
  }
  FTermTable().enter(kDepth, {names().intern("f"), {TERMT::variable(5)}});
  Terms found;
  variablesInFunctionTerm(found, TERMT{TermKind::kFunctionTerm, 0});
  EXPECT_EQ(found, list(TERMT::variable(5)));
}

TEST_F(TermTest, FreshNamesAvoidTheVariablesOfTheTerms) {
  const Terms used{newTERMT("Var1"), newTERMT("Var0"), newTERMT("X")};
  EXPECT_EQ(getNameTerm(used, 0), "Var2");
  EXPECT_EQ(getNameTerm(used, 5), "Var5");
  EXPECT_EQ(getNameTerm(list(function_term("Var0")), 0), "Var0");
  EXPECT_EQ(getNewName(3, newTERMT("X")), "X3");
  EXPECT_EQ(getNewName(3, newTERMT("a")), "C_const_3");
  EXPECT_EQ(getNewName(3, function_term("X")), "C_const_3");
}

}    // namespace
}    // namespace zarel
