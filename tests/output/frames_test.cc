// Frame atoms, printed as frames.

#include <regex>

#include "reading_fixture.h"

namespace zarel {
namespace {

// Here M(, R( and V( begin a membership, an attribute without a value and one with it, in the frame
// space n.
constexpr Case kFrames[] = {
    {"other_arrow", R"({V(o,a,1,"->"), V(o,a,2,"*->>"), V(o,a,3,"->")})",
     "{o[a->{1,3},a*->>2]@n}\n"},
    {"other_sign", R"({V(o,a,1,"->"), -V(o,a,2,"->"), -V(o,a,3,"->")})", "{o[a->1,-a->{2,3}]@n}\n"},
    {"equal_values_are_kept", R"({V(o,a,1,"->"), V(o,a,1,"->")})", "{o[a->{1,1}]@n}\n"},
    {"in_byte_order",
     R"({R(b,a), R(ab,a), R(12,a), R(aB,a), R("z",a), R(longname2,a), R(longname10,a)})",
     "{\"z\"[a]@n,12[a]@n,aB[a]@n,ab[a]@n,b[a]@n,longname10[a]@n,longname2[a]@n}\n"},
    {"valueless_ones_are_repeated", R"({R(o,a), R(o,a), V(o,a,1,"->")})", "{o[a,a,a->1]@n}\n"},
    {"a_value_without_an_arrow_joins_a_valueless_one", "{R(o,a), V(o,a,1)}", "{o[a{,1}]@n}\n"},
    {"arrow_and_attribute_are_apart", R"({V(o,ab,1,"c"), V(o,a,2,"bc")})", "{o[abc1,abc2]@n}\n"},
    {"membership_stands_among_the_atoms",
     "{a_2(p, default), M(o,c), -a_3(subClassOf, defaultFlogic, c, d), a_2(q, default)}",
     "{p, o:c@n, -c::d, q}\n"},
    {"terms_stay_whole", R"({V(f(a,g(b)), "x,y(", h(1,2), "->"), M(f(a,b), "c,d")})",
     R"({f(a,b):"c,d"@n, f(a,g(b))["x,y("->h(1,2)]@n})"
     "\n"},
    {"names_end_at_the_first_at_sign", R"({R("o@p",a)})", "{\"o[a]@n}\n"},
    {"further_arguments_are_ignored", R"({V(o,a,v,"->",x,y)})", "{o[a->v]@n}\n"},
    {"missing_arguments_are_empty", "{M(o), R(o), V(p)}", "{o:@n, o[]@n,p[]@n}\n"},
    {"other_relations_are_empty_texts",
     "{a_2(p, default), a_3(other, nFlogic, o, a), a_2(q, default), -a_3(other, nFlogic, o, a)}",
     "{p, , q, -}\n"},
    {"an_empty_text_alone_is_no_text", "{a_3(other, nFlogic, o, a), R(o,a)}", "{o[a]@n}\n"},
    {"the_marker_may_stand_anywhere", "{a_3(instanceOf, xFlogicabc, o, c)}", "{o:c@xFlo}\n"},
    {"a_function_term_as_space", R"({a_3(instanceOf, f("Flogic"), o, c)})", "{o:c@f(\"Fl}\n"},
};
class FrameReader : public ReadingTest<testing::TestWithParam<Case>> {};
TEST_P(FrameReader, PrintsWhatIsExpected) {
  std::string input(GetParam().input);
  input = std::regex_replace(input, std::regex("M\\("), "a_3(instanceOf, nFlogic, ");
  input = std::regex_replace(input, std::regex("R\\("), "a_3(valueOf, nFlogic, ");
  input = std::regex_replace(input, std::regex("V\\("), "a_5(valueOf, nFlogic, ");
  EXPECT_EQ(read(input), GetParam().output);
  EXPECT_EQ(read(std::regex_replace(input, std::regex(", "), ",")), GetParam().output);
}
INSTANTIATE_TEST_SUITE_P(Frames, FrameReader, testing::ValuesIn(kFrames), case_name);

// The pattern 200,000 times, a comma between, a number of seven digits for N.
std::string many(std::string_view pattern) {
  std::string all = numbered(200'000, joined({pattern, ","}), 1'000'000);
  all.pop_back();
  return all;
}

// Everything twice: what was met before is found again, however much has come since.
TEST_F(ReaderState, TakesManyValuesAttributesAndObjects) {
  const auto expect = [this](std::string_view statement, const std::string& expected) {
    const std::string all = many(statement);
    // Compared as a whole: a difference in a megabyte of text is not worth printing.
    EXPECT_TRUE(read(joined({"{", all, ",", all, "}"})) == expected);
  };
  expect(R"(a_5(valueOf,nFlogic,o,a,N,"->"))",
         joined({"{o[a->{", many("N"), ",", many("N"), "}]@n}\n"}));
  expect(R"(a_5(valueOf,nFlogic,o,aN,v,"->"))", joined({"{o[", many("aN->{v,v}"), "]@n}\n"}));
  expect(R"(a_5(valueOf,nFlogic,oN,a,v,"->"))", joined({"{", many("oN[a->{v,v}]@n"), "}\n"}));
}

TEST_F(ReaderState, DoesNotSlowDownBehindALargeFrame) {
  const std::string printed = read(joined({"{", many("a_3(valueOf,nFlogic,oN,a)"), "}",
                                           repeated("{a_3(valueOf,nFlogic,o,a)}", 100'000)}));
  EXPECT_TRUE(printed.ends_with(joined({"]@n}\n", repeated("{o[a]@n}\n", 100'000)})));
}

}    // namespace
}    // namespace zarel
