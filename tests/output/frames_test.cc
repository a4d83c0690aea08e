// Frame atoms, printed as frames.

#include "output/frame_map.h"
#include "reading_fixture.h"

namespace zarel {
namespace {

#define VALUE(rest) "a_5(valueOf, nFlogic, " rest ")"

constexpr Case kFrames[] = {
    {"grouped_behind_the_atoms",
     "{" VALUE("o, a, 1, \"->\"") ", a_2(p, default), " VALUE("o, b, t, \"=>\"") ", " VALUE(
         "o, a, 2, \"->\"") ", a_2(q, default)}",
     "{p, q, o[a->{1,2},b=>t]@n}\n"},
    {"alone", "{" VALUE("o, a, 1, \"*->>\"") "}", "{o[a*->>1]@n}\n"},
    {"another_arrow_is_another_attribute",
     "{" VALUE("o, a, 1, \"->\"") "," VALUE("o, a, 2, \"->>\"") "," VALUE("o, a, 3, \"->\"") "}",
     "{o[a->{1,3},a->>2]@n}\n"},
    {"a_negated_attribute_is_another",
     "{" VALUE("o, a, 1, \"->\"") ", -" VALUE("o, a, 2, \"->\"") ", -" VALUE("o, a, 3, \"->\"") "}",
     "{o[a->1,-a->{2,3}]@n}\n"},
    {"equal_values_are_kept", "{" VALUE("o, a, 1, \"->\"") "," VALUE("o, a, 1, \"->\"") "}",
     "{o[a->{1,1}]@n}\n"},
    {"objects_in_byte_order",
     "{" VALUE("b, a, 1, \"->\"") "," VALUE("ab, a, 1, \"->\"") "," VALUE("12, a, 1, \"->\"") "," VALUE(
         "aB, a, 1, \"->\"") "," VALUE("\"z\", a, 1, \"->\"") "," VALUE("longname2, a, 1, "
                                                                        "\"->\"") "," VALUE("lo"
                                                                                            "ng"
                                                                                            "na"
                                                                                            "me"
                                                                                            "10"
                                                                                            ", "
                                                                                            "a,"
                                                                                            " 1"
                                                                                            ", "
                                                                                            "\""
                                                                                            "->"
                                                                                            "\"") "}",
     "{\"z\"[a->1]@n,12[a->1]@n,aB[a->1]@n,ab[a->1]@n,b[a->1]@n,longname10[a->1]@n,"
     "longname2[a->1]@n}\n"},
    {"a_frame_space_is_part_of_the_object",
     "{" VALUE("o, a, 1, \"->\"") ", a_5(valueOf, mFlogic, o, a, 2, \"->\"), "
                                  "a_5(valueOf, defaultFlogic, o, a, 3, \"->\")}",
     "{o[a->3],o[a->2]@m,o[a->1]@n}\n"},
    {"valueless", "{a_3(valueOf, nFlogic, o, a), -a_3(valueOf, nFlogic, o, a)}", "{o[a,-a]@n}\n"},
    {"valueless_ones_are_repeated",
     "{a_3(valueOf, nFlogic, o, a), a_3(valueOf, nFlogic, o, a)," VALUE("o, a, 1, \"->\"") "}",
     "{o[a,a,a->1]@n}\n"},
    {"a_value_without_an_arrow_joins_a_valueless_one",
     "{a_3(valueOf, nFlogic, o, a), a_4(valueOf, nFlogic, o, a, 1)}", "{o[a{,1}]@n}\n"},
    {"arrow_and_attribute_are_kept_apart",
     "{" VALUE("o, ab, 1, \"c\"") "," VALUE("o, a, 2, \"bc\"") "}", "{o[abc1,abc2]@n}\n"},
    {"membership_stands_among_the_atoms",
     "{a_2(p, default), a_3(instanceOf, nFlogic, o, c), -a_3(subClassOf, defaultFlogic, c, d), "
     "a_2(q, default)}",
     "{p, o:c@n, -c::d, q}\n"},
    {"function_terms_and_strings_stay_whole",
     "{" VALUE(
         "f(a,g(b)), \"x,y(\", h(1,2), \"->\"") ", a_3(instanceOf, nFlogic, f(a,b), \"c,d\")}",
     "{f(a,b):\"c,d\"@n, f(a,g(b))[\"x,y(\"->h(1,2)]@n}\n"},
    {"names_end_at_the_first_at_sign", "{" VALUE("\"o@p\", a, 1, \"->\"") "}", "{\"o[a->1]@n}\n"},
    {"further_arguments_are_ignored", "{a_9(valueOf, nFlogic, o, a, v, \"->\", x, y)}",
     "{o[a->v]@n}\n"},
    {"missing_arguments_are_empty",
     "{a_2(instanceOf, nFlogic, o), a_3(valueOf, nFlogic, o), a_2(valueOf, nFlogic, p)}",
     "{o:@n, o[]@n,p[]@n}\n"},
    {"other_relations_are_empty_texts",
     "{a_2(p, default), a_3(other, nFlogic, o, a), a_2(q, default), -a_3(other, nFlogic, o, "
     "a)}",
     "{p, , q, -}\n"},
    {"an_empty_text_alone_is_no_text", "{a_3(other, nFlogic, o, a), a_3(valueOf, nFlogic, o, a)}",
     "{o[a]@n}\n"},
    {"the_marker_may_stand_anywhere", "{a_3(instanceOf, xFlogicabc, o, c)}", "{o:c@xFlo}\n"},
    {"a_function_term_as_space", "{a_3(instanceOf, f(\"Flogic\"), o, c)}", "{o:c@f(\"Fl}\n"},
    {"each_answer_set_has_its_own",
     "{" VALUE("o, a, 1, \"->\"") "}{" VALUE("o, a, 2, \"->\"") "}{a_2(p, default)}",
     "{o[a->1]@n}\n{o[a->2]@n}\n{p}\n"},
};
INSTANTIATE_TEST_SUITE_P(Frames, Reader, testing::ValuesIn(kFrames), case_name);

class LargeFrames : public ReadingTest<testing::Test> {
 protected:
  // Reads an answer set of many values; # in the texts stands for a number.
  void expect_frames(std::size_t count, const std::string& arguments, const std::string& frame,
                     std::string_view front, std::string_view back) {
    std::string input = "{";
    std::string expected = joined({"{", front});
    for (std::size_t i = 0; i < count; ++i) {
      const std::string number = std::to_string(1000000 + i);
      input += joined(
          {i == 0 ? "" : ", ", "a_5(valueOf, nFlogic, ", numbered(arguments, number), ", \"->\")"});
      expected += joined({i == 0 ? "" : ",", numbered(frame, number)});
    }
    // Compared as a whole: a difference in a megabyte of text is not worth printing.
    EXPECT_TRUE(read(input + "}") == joined({expected, back, "}\n"}));
  }

  static std::string numbered(std::string text, const std::string& number) {
    return text.replace(text.find('#'), 1, number);
  }
};

TEST_F(LargeFrames, TakeManyValuesOfOneAttribute) {
  expect_frames(200000, "o, a, #", "#", "o[a->{", "}]@n");
}

TEST_F(LargeFrames, TakeManyAttributesOfOneObject) {
  expect_frames(100000, "o, a#, v", "a#->v", "o[", "]@n");
}

TEST_F(LargeFrames, TakeManyObjects) {
  expect_frames(100000, "o#, a, v", "o#[a->v]@n", "", "");
}

TEST_F(LargeFrames, DoNotSlowDownTheAnswerSetsBehindThem) {
  std::string input = "{";
  for (int i = 0; i < 400000; ++i) {
    input += joined({"a_5(valueOf, nFlogic, o", std::to_string(i), ", a, v, \"->\"), "});
  }
  input += "a_2(p, default)}";
  read(input + repeated("{" VALUE("o, a, v, \"->\"") "}", 100000));
  EXPECT_TRUE(output_.str().ends_with(joined({"]@n}\n", repeated("{o[a->v]@n}\n", 100000)})));
}

}    // namespace
}    // namespace zarel
