// frame_encoding_test.cc - one statement in each of the three encodings.

#include "frames/frame_encoding.h"

#include "frames_fixture.h"
#include "model/names.h"

namespace zarel {
namespace {

struct EncodingCase {
  std::string_view name;
  ARROW arrow;
  std::string_view subject, attribute;
  std::optional<std::string_view> value;
  std::string_view with_frame_logic, without;
  friend void PrintTo(const EncodingCase& test, std::ostream* out) { *out << test.name; }
};

class Encoding : public FramesTest, public testing::WithParamInterface<EncodingCase> {};

TEST_P(Encoding, OfHigherOrderNamesHangsOnFrameLogic) {
  const EncodingCase& test = GetParam();
  const FrameStatement statement{false,      test.subject, test.attribute,
                                 test.value, test.arrow,   space()};
  EXPECT_EQ(text({relationToHigherOrder(statement)}), test.with_frame_logic);
  set_frame_logic(false);
  EXPECT_EQ(text({relationToHigherOrder(statement)}), test.without);
}

using enum ARROW;
constexpr EncodingCase kEncodings[] = {
    {"valueless", kNone, "o", "a", {}, "a_3(valueOf,fFlogic,o,a)", "a_2(a,f,o)"},
    {"negated_valueless", kNone, "o", "-a", {}, "-a_3(valueOf,fFlogic,o,a)", "-a_2(a,f,o)"},
    {"negated_valueless_object", kNone, "-o", "a", {}, "-a_3(valueOf,fFlogic,o,a)", "a_2(a,f,-o)"},
    {"single", kSingle, "o", "a", "v", "a_5(valueOf,fFlogic,o,a,v,\"->\")", "a_3(a,f,o,v)"},
    {"set", kSet, "O", "A", "V", "a_5(valueOf,fFlogic,O,A,V,\"->>\")", "a_3(A,f,O,V)"},
    {"signature", kSignature, "o", "-a", "v", "-a_5(valueOf,fFlogic,o,a,v,\"=>\")",
     "-a_3(a,f,o,v)"},
    {"set_signature", kSetSignature, "-o", "a", "12", "-a_5(valueOf,fFlogic,o,a,12,\"=>>\")",
     "a_3(a,f,-o,12)"},
    {"inheritable", kInheritable, "-o", "-a", "-v", "-a_5(valueOf,fFlogic,o,a,-v,\"*->\")",
     "-a_3(a,f,-o,-v)"},
    {"inheritable_set", kInheritableSet, "\"o p\"", "g(X)", "f(a,b)",
     "a_5(valueOf,fFlogic,\"o p\",g(X),f(a,b),\"*->>\")", "a_3(g(X),f,\"o p\",f(a,b))"},
    {"membership", kInstance, "o", "c", {}, "a_3(instanceOf,fFlogic,o,c)", "a_2(c,f,o)"},
    {"membership_with_a_value", kInstance, "o", "c", "c", "a_3(instanceOf,fFlogic,o,c)",
     "a_3(c,f,o,c)"},
    {"negated_membership", kInstance, "-o", "c", {}, "-a_3(instanceOf,fFlogic,o,c)", "a_2(c,f,-o)"},
    {"membership_in_a_negated_class",
     kInstance,
     "o",
     "-c",
     {},
     "-a_3(instanceOf,fFlogic,o,c)",
     "-a_2(c,f,o)"},
    {"subclass", kSubclass, "c", "d", {}, "a_3(subClassOf,fFlogic,c,d)", "a_2(d,f,c)"},
    {"a_subclass_keeps_its_minus",
     kSubclass,
     "-c",
     "d",
     {},
     "a_3(subClassOf,fFlogic,-c,d)",
     "a_2(d,f,-c)"},
    {"subclass_of_a_negated_class",
     kSubclass,
     "-c",
     "-d",
     {},
     "-a_3(subClassOf,fFlogic,-c,d)",
     "-a_2(d,f,-c)"},
    {"negated_signature", kNegatedSignature, "-o", "-a", "v", "-a_3(a,f,-o,v)", "-a_3(a,f,-o,v)"},
    {"valueless_negated_signature", kNegatedSignature, "o", "a", {}, "a_2(a,f,o)", "a_2(a,f,o)"},
};
INSTANTIATE_TEST_SUITE_P(Cases, Encoding, testing::ValuesIn(kEncodings),
                         [](const auto& test) { return std::string(test.param.name); });

TEST_F(FramesTest, EncodesForTemplatesWithTheSubjectBeforeTheSpace) {
  cont() = 7;
  const FrameStatement statement{true, "X", "a", "v", kSingle, space()};
  EXPECT_EQ(text({relationToLITERALT(statement), relationToTemplateLiteral(statement)}),
            "not a(f,X,v); not #7a(X,f,v)");
  const FrameStatement valueless{false, "o", "a", {}, kNone, space()};
  EXPECT_EQ(text({relationToLITERALT(valueless), relationToTemplateLiteral(valueless)}),
            "a(f,o); #7a(o,f)");
}

TEST_F(FramesTest, EncodesUnderNot) {
  const Literal literal = relationToHigherOrder({true, "X", "A", {}, kNone, space()});
  EXPECT_EQ(text({literal}), "not a_3(valueOf,fFlogic,X,A)");
  EXPECT_TRUE(literal.atom.terms()[2].is_variable() && literal.atom.terms()[3].is_variable());
}

}    // namespace
}    // namespace zarel
