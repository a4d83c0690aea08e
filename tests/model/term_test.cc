// Names, their numbers, and terms.

#include "model/term.h"

#include <limits>

#include "model/established.h"
#include "model_fixture.h"

namespace zarel {
namespace {

using TermTest = ModelTest;

TEST(NameTableTest, KeepsCopiesOfTheSpellingsInPlaceWhileItGrows) {
  NameTable table;
  EXPECT_EQ(table.find(""), std::nullopt);
  std::string text = "abc";
  const std::string_view early = table.spelling(table.intern(text));
  table.intern(std::string_view(text).substr(0, 2));
  text = "xyz";
  constexpr std::uint32_t kNames = 100'000;
  const auto name = [](std::uint32_t i) { return "name" + std::to_string(i); };
  for (std::uint32_t i = 2; i < kNames; ++i) ASSERT_EQ(table.intern(name(i)), NameId{i});
  for (std::uint32_t i = 2; i < kNames; ++i) ASSERT_EQ(table.find(name(i)), NameId{i});
  EXPECT_EQ(table.size(), kNames);
  EXPECT_EQ(early, "abc");
  EXPECT_EQ(early.data(), table.spelling(NameId{0}).data());
  EXPECT_EQ(table.find("ab"), NameId{1});
  EXPECT_EQ(table.find(""), std::nullopt);
}

TEST_F(TermTest, AVariableBeginsWithAnUpperCaseLetter) {
  for (const char* text : {"X", "Xyz", "Ax", "Zx"})
    EXPECT_EQ(newTERMT(text).kind, TermKind::kVariable) << text;
  for (const char* text : {"foo", "1x", "\"Ab\"", "_A", "@", "[", "\xc3\x84"})
    EXPECT_EQ(newTERMT(text).kind, TermKind::kConstant) << text;
}

TEST_F(TermTest, AVariableKeepsItsNumberAndAnonymousOnesTakeOneEach) {
  newTERMT("b");    // a constant takes no variable number
  EXPECT_EQ(newTERMT("X"), TERMT::variable(0));
  EXPECT_EQ(TERMT::anonymous(), (TERMT{TermKind::kAnonymous, 1}));
  EXPECT_EQ(newTERMT("Y"), TERMT::variable(2));
  EXPECT_EQ(newTERMT("X"), TERMT::variable(0));
  EXPECT_EQ(getVariableName(2), "Y");
  EXPECT_EQ(end_of([] { getVariableName(1); }), 1);
  EXPECT_EQ(end_of([] { getVariableName(4'000'000'000U); }), 1);
  EXPECT_EQ(errors_.str(), "");
}

TEST_F(TermTest, AfterAResetAVariablePrintsUnderTheOldestNameOfItsNumber) {
  for (const char* name : {"X", "Y"}) newTERMT(name);
  LocalVariables().reset();
  std::int32_t number = 0;
  for (const char* name : {"Z", "X", "Y", "W"}) EXPECT_EQ(newTERMT(name).value(), number++);
  EXPECT_EQ(getVariableName(0), "X");
  EXPECT_EQ(getVariableName(1), "Y");
  EXPECT_EQ(getVariableName(3), "W");
  EXPECT_EQ(Variables().size(), 4U);
  // Y was registered with another number, so no registered name had this one.
  EXPECT_EQ(end_of([] { getVariableName(2); }), 1);
}

TEST_F(TermTest, EqualityLooksAtValuesExceptOfAbsentTerms) {
  EXPECT_EQ((TERMT{TermKind::kAbsent, 1}), (TERMT{TermKind::kAbsent, 2}));
  EXPECT_FALSE((TERMT{TermKind::kAsterisk, 0} == TERMT{TermKind::kAsterisk, 2}));
  EXPECT_FALSE(num(0) == newTERMT("a"));
}

TEST_F(TermTest, ATermHoldsEveryInteger) {
  constexpr std::int32_t kGreatest = std::numeric_limits<std::int32_t>::max();
  for (const std::int32_t value : {0, 268'435'455, 268'435'456, kGreatest, -1, -kGreatest - 1}) {
    EXPECT_EQ(num(value).value(), value);
    EXPECT_EQ(text_of(num(value)), std::to_string(value));
    EXPECT_EQ(num(value), num(value));
    EXPECT_FALSE(num(value) == num(value == 0 ? kGreatest : 0));
  }
}

TEST_F(TermTest, ArgumentListsHoldTheTermsThatAreGiven) {
  const TERMT x = num(1), y = num(2), z = num(3);
  EXPECT_EQ(newTERMTS(x, &y, &z), (Terms{x, y, z}));
  EXPECT_EQ(newTERMTS(x, nullptr, nullptr), Terms{x});
}

TEST_F(TermTest, PatternsAreFilledWithActualTerms) {
  const TERMT star = TERMT::asterisk(), a = newTERMT("a");
  const Terms actual{num(1), num(2), num(3)};
  EXPECT_EQ(getTerms(actual, Terms{star, a, TERMT::dollar(), star}),
            (Terms{num(1), a, num(2), num(3)}));
  EXPECT_EQ(getTerms(actual, Terms{star, TERMT::absent()}),
            (Terms{num(1), TERMT::absent(), num(2), num(3)}));
  EXPECT_EQ(getTerms(Terms{num(1)}, Terms{star, star}), Terms{num(1)});
}

TEST_F(TermTest, FreshNamesAvoidTheVariablesOfTheTerms) {
  const Terms used{newTERMT("Var1"), newTERMT("Var0"), newTERMT("X")};
  EXPECT_EQ(getNameTerm(used, 0), "Var2");
  EXPECT_EQ(getNameTerm(used, 5), "Var5");
  EXPECT_EQ(getNameTerm(Terms{function_term("Var0")}, 0), "Var0");
  EXPECT_EQ(getNewName(3, newTERMT("X")), "X3");
  EXPECT_EQ(getNewName(3, newTERMT("a")), "C_const_3");
  EXPECT_EQ(getNewName(3, function_term("X")), "C_const_3");
}

}    // namespace
}    // namespace zarel
