// Names made and taken apart, and name spaces.

#include "model/names.h"

#include "model/namespaces.h"
#include "model_fixture.h"

namespace zarel {
namespace {

struct Name {
  std::string_view name;
  std::string (*change)(std::string_view);
  std::string_view input, output;
  friend void PrintTo(const Name& test, std::ostream* out) { *out << test.name; }
};
class ChangedName : public ModelTable<Name> {};
TEST_P(ChangedName, IsAsExpected) {
  EXPECT_EQ(GetParam().change(GetParam().input), GetParam().output);
}

const auto plain = [](std::string_view name) { return std::string(getName(name)); };
const auto unprefixed = [](std::string_view name) {
  return std::string(getNameWithoutPrefix(name));
};
const auto label = [](std::string_view name) { return std::to_string(getLabel(name)); };
const auto cut_keeping = [](std::string_view name) {
  return std::string(cut_at_underscore(name, LeadingUnderscores::kKeep));
};
const auto cut_skipping = [](std::string_view name) {
  return std::string(cut_at_underscore(name, LeadingUnderscores::kSkip));
};

constexpr Name kNames[] = {
    {"label_dropped", getNameWithoutLabel, "p_12", "p"},
    {"last_label_dropped", getNameWithoutLabel, "a_b_3", "a_b"},
    {"no_label_to_drop", getNameWithoutLabel, "p", ""},
    {"only_a_label", getNameWithoutLabel, "_7", ""},
    {"label", label, "a_b_3", "3"},
    {"long_label", label, "p_120", "120"},
    {"no_label", label, "p", "0"},
    {"wordy_label", label, "p_q", "0"},
    {"label_ends_at_a_letter", label, "p_4q", "4"},
    {"empty_label", label, "p_", "0"},
    {"name_behind_digits", plain, "12p", "p"},
    {"name_behind_template_number", plain, "#3p_1", "p_1"},
    {"name_behind_strong_negation", plain, "-p", "p"},
    {"name_behind_everything", plain, "#1-2p-3", "p-3"},
    {"name_from_a_colon", plain, "1:p", ":p"},
    {"name_of_digits_only", plain, "#12", ""},
    {"prefix_of_digits", unprefixed, "12p", "p"},
    {"prefix_of_a_template", unprefixed, "#3p", "p"},
    {"prefix_ends_at_strong_negation", unprefixed, "-p", "-p"},
    {"prefix_before_strong_negation", unprefixed, "#3-2p", "-2p"},
    {"prefix_before_an_invocation_mark", unprefixed, "1@t", "@t"},
    {"prefix_only", unprefixed, "#12", ""},
    {"cut", cut_keeping, "p_q_1", "p"},
    {"cut_keeps_underscores", cut_keeping, "__p_1", "__p"},
    {"cut_skips_underscores", cut_skipping, "__p_1", "p"},
    {"cut_nothing", cut_skipping, "p", "p"},
    {"cut_underscores_only", cut_skipping, "__", ""},
};
INSTANTIATE_TEST_SUITE_P(Cases, ChangedName, testing::ValuesIn(kNames), case_name);

using NamesTest = ModelTest;

TEST_F(NamesTest, LabelsAreFreeOfPredicates) {
  EXPECT_EQ(getNameLabeledConst("p", 12), "p_12");
  atom("p_0");
  atom("p_1");
  newTERMT("p_2");    // a constant takes no label
  EXPECT_EQ(getAtomLabeled("p"), "p_2");
  EXPECT_EQ(getAtomLabeled("p"), "p_2");
  int counter = 1;
  EXPECT_EQ(getNameLabeled("p", counter), "p_2");
  EXPECT_EQ(counter, 3);
}

TEST_F(NamesTest, TemplateNumbersStandInFront) {
  EXPECT_EQ(getNameTemplateLabeled({"t", {}, 1, {}, 12}), "#12t");
  cont() = 4;
  EXPECT_EQ(getNameAtomLabeled("p"), "#4p");
  EXPECT_EQ(cont(), 4);
  reset_tables();
  EXPECT_EQ(getNameAtomLabeled("p"), "#0p");
}

TEST_F(NamesTest, FormalPredicatesAreFoundByTheirPlainName) {
  const std::vector<std::pair<const char*, ATOMT>> formals{{"p", atom("x")}, {"q", atom("y")}};
  EXPECT_TRUE(isFormalPred(atom("#2q"), formals));
  EXPECT_TRUE(isFormalPred(newNegativeATOMT("p", {}), formals));
  EXPECT_FALSE(isFormalPred(atom("x"), formals));
  EXPECT_FALSE(isFormalPred(atom("q_1"), formals));
  EXPECT_FALSE(isFormalPred(atom("q"), {}));
}

TEST_F(NamesTest, AtomsAreFoundByTheirNameBeforeTheFirstUnderscore) {
  TCONJUNCTION<ATOMT> list;
  EXPECT_FALSE(esiste(list, atom("p")));
  list.add(atom("r"));
  list.add(atom("#1p_2"));
  EXPECT_TRUE(esiste(list, atom("p_7_1", num(1))));
  EXPECT_TRUE(esiste(list, atom("__p")));
  EXPECT_FALSE(esiste(list, atom("pq")));
  EXPECT_FALSE(esiste(list, newNegativeATOMT("p", {})));
}

TEST_F(NamesTest, ParametersCoincideWhereNoMarkerStands) {
  const TERMT star = TERMT::asterisk(), a = newTERMT("a"), b = newTERMT("b");
  const TERMT x = newTERMT("X"), y = newTERMT("Y");
  EXPECT_TRUE(parametersCoincidence(list(star, a), list(b, a)));
  EXPECT_TRUE(parametersCoincidence(list(TERMT::dollar(), a), list(num(1), a, b)));
  EXPECT_TRUE(parametersCoincidence(list(), list(b)));
  EXPECT_TRUE(parametersCoincidence(list(x, a), list(x, a)));
  EXPECT_FALSE(parametersCoincidence(list(x, a), list(y, a)));
  EXPECT_FALSE(parametersCoincidence(list(a), list(star)));
  EXPECT_FALSE(parametersCoincidence(list(x), list(function_term("X"))));
  EXPECT_FALSE(parametersCoincidence(list(TERMT::anonymous()), list(TERMT::anonymous())));
  EXPECT_TRUE(parametersCoincidence(list(TERMT{TermKind::kAbsent, 1}), list(TERMT::absent())));
}

TEST_F(NamesTest, AddressesJoinTheNameSpaceAndTheLocalName) {
  EXPECT_EQ(returnAddress("n", "x"), std::nullopt);
  EXPECT_TRUE(vectorName().declare("n", "\"http://a#\""));
  EXPECT_TRUE(vectorName().declare("m", "\"http://a#\""));
  EXPECT_FALSE(vectorName().declare("n", "\"http://b#\""));
  EXPECT_EQ(returnAddress("n", "x"), "\"http://a#x\"");
  EXPECT_EQ(returnAddress("n", ""), "\"http://a#\"");
  EXPECT_EQ(returnAddress("k", "x"), std::nullopt);
  EXPECT_EQ(vectorName().prefix_of("\"http://a#\""), "n");
  EXPECT_EQ(vectorName().prefix_of("http://a#"), std::nullopt);
  EXPECT_EQ(vectorName().uri_of("m"), "\"http://a#\"");
  EXPECT_EQ(vectorName().pairs().size(), 2U);
  EXPECT_EQ(errors_.str(), "");
}

TEST_F(NamesTest, PrefixUseIsNotedUntilTheReset) {
  EXPECT_FALSE(prefix_was_used());
  note_prefix_use();
  EXPECT_TRUE(prefix_was_used());
  reset_tables();
  EXPECT_FALSE(prefix_was_used());
}

}    // namespace
}    // namespace zarel
