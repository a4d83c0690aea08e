// frame_encoding_test.cc - one statement in each of the three encodings.

#include "frames/frame_encoding.h"

#include "frames_fixture.h"
#include "model/names.h"

namespace zarel {
namespace {

using enum ARROW;

struct EncodingCase {
  ARROW arrow;
  std::string_view subject, name;
  std::optional<std::string_view> value;
  std::string_view with_frame_logic, without;
};
constexpr EncodingCase kEncodings[] = {
    {kNone, "o", "a", {}, "a_3(valueOf,fFlogic,o,a)", "a_2(a,f,o)"},
    {kNone, "o", "-a", {}, "-a_3(valueOf,fFlogic,o,a)", "-a_2(a,f,o)"},
    {kNone, "-o", "a", {}, "-a_3(valueOf,fFlogic,o,a)", "a_2(a,f,-o)"},
    {kSet, "O", "A", "V", R"(a_5(valueOf,fFlogic,O,A,V,"->>"))", "a_3(A,f,O,V)"},
    {kSignature, "o", "-a", "v", R"(-a_5(valueOf,fFlogic,o,a,v,"=>"))", "-a_3(a,f,o,v)"},
    {kSetSignature, "-o", "a", "12", R"(-a_5(valueOf,fFlogic,o,a,12,"=>>"))", "a_3(a,f,-o,12)"},
    {kInheritable, "-o", "-a", "-v", R"(-a_5(valueOf,fFlogic,o,a,-v,"*->"))", "-a_3(a,f,-o,-v)"},
    {kSingle, "\"o\"", "g(X)", "h(a,b)", R"(a_5(valueOf,fFlogic,"o",g(X),h(a,b),"->"))",
     R"(a_3(g(X),f,"o",h(a,b)))"},
    {kInstance, "o", "c", {}, "a_3(instanceOf,fFlogic,o,c)", "a_2(c,f,o)"},
    {kInstance, "o", "c", "c", "a_3(instanceOf,fFlogic,o,c)", "a_3(c,f,o,c)"},
    {kInstance, "o", "-c", {}, "-a_3(instanceOf,fFlogic,o,c)", "-a_2(c,f,o)"},
    {kSubclass, "-c", "d", {}, "a_3(subClassOf,fFlogic,-c,d)", "a_2(d,f,-c)"},
    {kSubclass, "-c", "-d", {}, "-a_3(subClassOf,fFlogic,-c,d)", "-a_2(d,f,-c)"},
    {kNegatedSignature, "-o", "-a", "v", "-a_3(a,f,-o,v)", "-a_3(a,f,-o,v)"},
    {kNegatedSignature, "o", "a", {}, "a_2(a,f,o)", "a_2(a,f,o)"},
};

TEST_F(FramesTest, EncodesByHigherOrderNamesWithAndWithoutFrameLogic) {
  for (const EncodingCase& test : kEncodings) {
    const FrameStatement statement{false, test.subject, test.name, test.value, test.arrow, space()};
    set_frame_logic(true);
    EXPECT_EQ(text({relationToHigherOrder(statement)}), test.with_frame_logic);
    set_frame_logic(false);
    EXPECT_EQ(text({relationToHigherOrder(statement)}), test.without);
  }
}

TEST_F(FramesTest, EncodesForTemplatesWithTheSubjectBeforeTheSpace) {
  cont() = 7;
  const FrameStatement statement{true, "X", "a", "v", kSingle, space()};
  EXPECT_EQ(text({relationToLITERALT(statement), relationToTemplateLiteral(statement)}),
            "not a(f,X,v); not #7a(X,f,v)");
  const FrameStatement valueless{false, "o", "a", {}, kNone, space()};
  EXPECT_EQ(text({relationToLITERALT(valueless), relationToTemplateLiteral(valueless)}),
            "a(f,o); #7a(o,f)");
}

TEST_F(FramesTest, EncodesVariablesUnderNot) {
  const Literal literal = relationToHigherOrder({true, "X", "A", {}, kNone, space()});
  EXPECT_EQ(text({literal}), "not a_3(valueOf,fFlogic,X,A)");
  EXPECT_TRUE(literal.atom.terms()[2].is_variable() && literal.atom.terms()[3].is_variable());
}

}    // namespace
}    // namespace zarel
