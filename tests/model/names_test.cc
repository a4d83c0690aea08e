// Names made and taken apart.

#include "model/names.h"

#include "model/established.h"
#include "model_fixture.h"

namespace zarel {
namespace {

using Names = ModelTest;

// What the function makes of each name, "|" behind every one.
template <class Function>
std::string mapped(Function function, std::initializer_list<std::string_view> inputs) {
  std::string all;
  for (const std::string_view name : inputs) all.append(function(name)).append("|");
  return all;
}

TEST_F(Names, AreTakenApart) {
  EXPECT_EQ(mapped(getNameWithoutLabel, {"p_12", "a_b_3", "p", "_7"}), "p|a_b|||");
  const auto label = [](std::string_view name) { return std::to_string(getLabel(name)); };
  EXPECT_EQ(mapped(label, {"p_120", "a_b_3", "p", "p_q", "p_4q", "p_"}), "120|3|0|0|4|0|");
  const std::initializer_list<std::string_view> prefixed = {"12p", "#3p_1", "-p",   "#1-2p-3",
                                                            "1:p", "1@t",   "\xc3", "#12"};
  EXPECT_EQ(mapped(getName, prefixed), "p|p_1|p|p-3|:p|@t|\xc3||");
  EXPECT_EQ(mapped(getNameWithoutPrefix, prefixed), "p|p_1|-p|-2p-3|:p|@t|\xc3||");
  const auto cut = [](LeadingUnderscores leading) {
    return [leading](std::string_view name) { return cut_at_underscore(name, leading); };
  };
  EXPECT_EQ(mapped(cut(LeadingUnderscores::kKeep), {"p_q_1", "__p_1", "p", "__"}), "p|__p|p|__|");
  EXPECT_EQ(mapped(cut(LeadingUnderscores::kSkip), {"p_q_1", "__p_1", "p", "__"}), "p|p|p||");
}

TEST_F(Names, TakeLabelsThatAreFreeOfPredicates) {
  atom("p_0");
  newTERMT("p_2");    // a constant takes no label, be it before a predicate or behind them all
  atom("p_1");
  EXPECT_EQ(getAtomLabeled("p"), "p_2");
  atom("p_2");
  newTERMT("p_3");
  int counter = 1;
  EXPECT_EQ(getNameLabeled("p", counter), "p_3");
  EXPECT_EQ(counter, 4);
}

TEST_F(Names, TakeTemplateNumbersInFront) {
  EXPECT_EQ(getNameTemplateLabeled({"t", {}, 1, {}, 12}), "#12t");
  cont() = 4;
  EXPECT_EQ(getNameAtomLabeled("p") + getNameAtomLabeled("p"), "#4p#4p");
  begin({});
  EXPECT_EQ(getNameAtomLabeled("p"), "#0p");
}

TEST_F(Names, OfFormalPredicatesAreFoundWithoutPrefixAndSign) {
  const std::vector<std::pair<const char*, ATOMT>> formals{{"p", atom("x")}, {"q", atom("y")}};
  EXPECT_TRUE(isFormalPred(atom("#2q"), formals) && isFormalPred(atom("-p"), formals));
  EXPECT_FALSE(isFormalPred(atom("x"), formals) || isFormalPred(atom("q_1"), formals));
}

TEST_F(Names, OfAtomsAreFoundUpToTheirFirstUnderscore) {
  TCONJUNCTION<ATOMT> list;
  EXPECT_FALSE(esiste(list, atom("p")));
  list.add(atom("r"));
  list.add(atom("#1p_2"));
  EXPECT_TRUE(esiste(list, atom("p_7_1", num(1))) && esiste(list, atom("__p")));
  EXPECT_FALSE(esiste(list, atom("pq")) || esiste(list, atom("-p")));
}

TEST_F(Names, OfParametersCoincideWhereNoMarkerStands) {
  const TERMT star = TERMT::asterisk(), a = newTERMT("a"), b = newTERMT("b"), x = newTERMT("X");
  EXPECT_TRUE(parametersCoincidence(Terms{star, a}, Terms{b, a}));
  EXPECT_TRUE(parametersCoincidence(Terms{TERMT::dollar(), x}, Terms{num(1), x, b}));
  EXPECT_FALSE(parametersCoincidence(Terms{a, x}, Terms{a, newTERMT("Y")}));
  EXPECT_FALSE(parametersCoincidence(Terms{a}, Terms{star}));
  EXPECT_FALSE(parametersCoincidence(Terms{x}, Terms{function_term("X")}));
  EXPECT_FALSE(parametersCoincidence(Terms{TERMT::anonymous()}, Terms{TERMT::anonymous()}));
}

}    // namespace
}    // namespace zarel
