// translation_test.cc - the exact text for clingo, where it matters.
#include "run_dl.h"

namespace dl_test {
namespace {

constexpr Case kTranslations[] = {
    {"keeps_the_order_of_a_rule", "a(X) v -b :- c(X), not d(X).",
     "a(X);-b:-c(X),not d(X).\n#show.\n#show a/1.\n#show -b/0.\n", "-translate"},
    {"puts_assignments_after_what_they_need", "a(Z) :- Z == Y, #function_builtin(Y,f,X), p(X).",
     "a(Z):-p(X),Y=f(X),Z=Y.\n#show.\n#show a/1.\n", "-translate"},
    {"watches_sums_for_overflow", "a(Z) :- p(X), Z = X + 1.",
     "_fault(0):-p(X),1=_o,|X|>2147483647-1.\na(Z):-p(X),Z=|X|+1,|X|<=_m-1.\n"
     "#const _m=2147483647.\n#const _r=-1.\n#const _o=1.\n#show.\n#show _fault/1.\n"
     "#show a/1.\n",
     "-translate"},
    {"shows_what_the_filters_name", "a. -a. b. -b. c.",
     "a.\n-a.\nb.\n-b.\nc.\n#show.\n#show a/0.\n#show -a/0.\n#show b/0.\n",
     "-translate -filter=a -pfilter=b,none"},
};
INSTANTIATE_TEST_SUITE_P(Translations, OrderedPrograms, testing::ValuesIn(kTranslations),
                         case_name);

TEST(Translation, CutsALongBodyIntoPiecesThatCarryWhatIsNeeded) {
  const std::string all = translation("a(X) :- p(X,Y0)" + numbered(299, ", p(YN,YM)") + ".");
  EXPECT_EQ(all.substr(0, 9), "_h1(X,Y7)");
  EXPECT_EQ(all.substr(all.find('\n') + 1, 23), "_h2(X,Y15):-_h1(X,Y7),p");
  EXPECT_NE(all.find("\na(X):-_h37(X,Y295),p(Y295,Y296),"), std::string::npos);
}

// Each p stands before its q, so that no piece carries a variable on.
TEST(Translation, OfALongBodyOrdersByVariables) {
  const std::string body = numbered(300, "p(XN), ") + numbered(300, "q(XN), ");
  EXPECT_EQ(translation("a :- " + body + "b.").substr(0, 31), "_h1:-p(X0),q(X0),p(X1),q(X1),p(");
}

TEST(Translation, LooksOnceAtALiteralForAllUsesOfAVariable) {
  const auto size_with = [](int count) {    // minutes, were it once for each use
    return translation("a :- p(X), #function_builtin(F,f" + numbered(count, ",X") + ").").size();
  };
  EXPECT_EQ(size_with(300'000), size_with(1) + 599'998);
}

TEST(Translation, WatchesALongBodyOfAnAggregateInPieces) {
  const std::string body = "q(X,Y0)" + numbered(10'000, ", YM = YN + Z");
  const std::string all = translation("a :- p(Z), 1 < #count{X:" + body + "}.");
  EXPECT_LT(all.size(), 20 * body.size());
  EXPECT_NE(all.find("_h2(Z,Y15):-p(Z),_h1(Z,Y7),Y8=|Y7|+Z"), std::string::npos);
}

}    // namespace
}    // namespace dl_test
