// frame_translation_test.cc - one statement in each encoding, and frames into literals where no
// input file says it: in templates, without higher-order names, and as rules of frames alone.

#include "frames/frame_translation.h"

#include <sstream>

#include "frames/established.h"
#include "frames/frame_encoding.h"
#include "frames_fixture.h"
#include "model/names.h"
#include "model/program.h"
#include "zarel/program_text.h"

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
    const std::optional<NameId> value =
        test.value ? std::optional(names().intern(*test.value)) : std::nullopt;
    const FrameStatement statement{
        false, names().intern(test.subject), names().intern(test.name), value, test.arrow, space()};
    current_run().options.OptionFramelogic = true;
    EXPECT_EQ(text({relationToHigherOrder(statement)}), test.with_frame_logic);
    current_run().options.OptionFramelogic = false;
    EXPECT_EQ(text({relationToHigherOrder(statement)}), test.without);
  }
}

TEST_F(FramesTest, EncodesNotVariablesAndMissingValuesInEachOfThem) {
  cont() = 7;
  const auto name = [](std::string_view text) { return names().intern(text); };
  const FrameStatement full{true, name("X"), name("A"), name("v"), kSingle, space()};
  const FrameStatement valueless{false, name("o"), name("a"), {}, kNone, space()};
  const Literal literal = relationToHigherOrder(full);
  EXPECT_EQ(text({literal, relationToLITERALT(full), relationToTemplateLiteral(full)}),
            "not a_5(valueOf,fFlogic,X,A,v,\"->\"); not A(f,X,v); not #7A(X,f,v)");
  EXPECT_EQ(text({relationToLITERALT(valueless), relationToTemplateLiteral(valueless)}),
            "a(f,o); #7a(o,f)");
  EXPECT_TRUE(literal.atom.terms()[2].is_variable() && literal.atom.terms()[3].is_variable());
}

class Translation : public FramesTest {
 protected:
  static std::string written(const std::vector<CLAUSET>& clauses) {
    std::ostringstream out;
    for (const CLAUSET& clause : clauses) out << clause << '\n';
    return out.str();
  }
  static std::string globals() {
    std::string text;
    for (const NameId name : Atom_Globals().names())
      text.append(names().spelling(name)).append(" ");
    return text;
  }

  static void expect_idb(const CLAUSET& auxiliary) {
    const std::uint32_t predicate = auxiliary.head()[0].predicate();
    EXPECT_EQ(ATOMT::Predicates().type(predicate), PREDICATE_NAMETS::TYPE::kIdb);
  }

  const FrameContext usual_{true, false};
  const FRAME object_ = frame("o", {says("-a", kSingle, {frame("X")}),
                                    says("not b", kSet, {frame("Y"), frame("X")}), says("not c")});
};

#define FIRST "-a_5(valueOf,fFlogic,o,a,X,\"->\")"
#define THIRD "a_3(valueOf,fFlogic,o,c)"
#define AUXILIARY \
  "aaa0(Y,X) :- a_5(valueOf,fFlogic,o,b,Y,\"->>\"), a_5(valueOf,fFlogic,o,b,X,\"->>\").\n"

TEST_F(Translation, KeepsStatementsInOrderAndThePlaceOfAuxiliaryRules) {
  const WorkScope at(ClauseSource{{3, 1, 0}});
  EXPECT_EQ(text(toLiterals(object_, usual_)), FIRST "; not aaa0(Y,X); not " THIRD);
  EXPECT_EQ(written(CLAUSES()), AUXILIARY);
  EXPECT_EQ(CLAUSES()[0].source().location.line, 3U);
  EXPECT_EQ(CLAUSES()[0].source().origin, OriginId::kFrame);
  EXPECT_EQ(globals(), "a_5 a_3 ");
  expect_idb(CLAUSES()[0]);
}

TEST_F(Translation, LooksAtTheNotOfAFrameInBodiesOnly) {
  FRAME negated = object_;
  negated.set_negated(true);
  EXPECT_EQ(text(standardize(negated, FramePosition::kBody, usual_)), "not faa0(X,Y,X)");
  EXPECT_EQ(text(standardize(negated, FramePosition::kHead, usual_)), "faa1(X,Y,X)");
  EXPECT_EQ(FRAME::nextAuxAtom(), 2U);
  EXPECT_EQ(ATTRIBUTE::nextAuxAtom(), 2U);
  expect_idb(CLAUSES()[1]);    // faa0
}

TEST_F(Translation, RecordsAttributesAsNamesButInTemplates) {
  EXPECT_EQ(text(toLiterals(object_, {true, true})), "#0-a(o,f,X); not aaa0(Y,X); not #0c(o,f)");
  EXPECT_EQ(globals(), "");
  EXPECT_EQ(written(CLAUSES()), "aaa0(Y,X) :- #0b(o,f,Y), #0b(o,f,X).\n");
  EXPECT_EQ(text(toLiterals(object_, {false, false})), "-a(f,o,X); not aaa1(Y,X); not c(f,o)");
  EXPECT_EQ(globals(), "a b c ");
}

TEST_F(Translation, OfARuleCopiesTheBodyToEachStatement) {
  FRAME condition = object_;
  condition.set_negated(true);    // a frame rule does not look at it
  const FRAME_BODY body({condition, frame("q", {says("d")})});
  const FRAME_HEAD head({frame("X", {says("e"), says("g")}), frame("p", {says("h")})});
  const std::string of = FIRST ", a_3(valueOf,fFlogic,q,d), not aaa0(Y,X), not " THIRD ".\n";
  EXPECT_EQ(written(FRAME_RULE(head, body).standardize(usual_)),
            "a_3(valueOf,fFlogic,X,e) :- " + of + "a_3(valueOf,fFlogic,X,g) :- " + of +
                "a_3(valueOf,fFlogic,p,h) :- " + of);
  EXPECT_EQ(written(CLAUSES()), AUXILIARY);
  const FRAME of_one = frame("p", {says("h")});
  EXPECT_EQ(written(FRAME_RULE(FRAME_HEAD({of_one})).standardize(usual_)) +
                written(FRAME_RULE(FRAME_BODY({of_one})).standardize(usual_)),
            "a_3(valueOf,fFlogic,p,h).\n:- a_3(valueOf,fFlogic,p,h).\n");
  EXPECT_TRUE(FRAME_RULE(FRAME_HEAD({frame("o")}), body).standardize(usual_).empty());
}

}    // namespace
}    // namespace zarel
