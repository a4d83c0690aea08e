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
    {kNone, "-o", "a", {}, "-a_3(valueOf,fFlogic,o,a)", "a_2(a,f,-o)"},
    {kSignature, "o", "-a", "v", R"(-a_5(valueOf,fFlogic,o,a,v,"=>"))", "-a_3(a,f,o,v)"},
    {kInheritable, "-o", "-a", "-v", R"(-a_5(valueOf,fFlogic,o,a,-v,"*->"))", "-a_3(a,f,-o,-v)"},
    {kInstance, "o", "c", "c", "a_3(instanceOf,fFlogic,o,c)", "a_3(c,f,o,c)"},
    {kInstance, "o", "-c", {}, "-a_3(instanceOf,fFlogic,o,c)", "-a_2(c,f,o)"},
    {kSubclass, "-c", "-d", {}, "-a_3(subClassOf,fFlogic,-c,d)", "-a_2(d,f,-c)"},
    {kNegatedSignature, "-o", "-a", "v", "-a_3(a,f,-o,v)", "-a_3(a,f,-o,v)"},
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

TEST_F(FramesTest, EncodesNotVariablesAndMissingValuesInEachOfThem) {
  cont() = 7;
  const FrameStatement full{true, "X", "A", "v", kSingle, space()};
  const FrameStatement valueless{false, "o", "a", {}, kNone, space()};
  const Literal literal = relationToHigherOrder(full);
  EXPECT_EQ(text({literal, relationToLITERALT(full), relationToTemplateLiteral(full)}),
            "not a_5(valueOf,fFlogic,X,A,v,\"->\"); not A(f,X,v); not #7A(X,f,v)");
  EXPECT_EQ(text({relationToLITERALT(valueless), relationToTemplateLiteral(valueless)}),
            "a(f,o); #7a(o,f)");
  EXPECT_TRUE(literal.atom.terms()[2].is_variable() && literal.atom.terms()[3].is_variable());
}

}    // namespace
}    // namespace zarel
