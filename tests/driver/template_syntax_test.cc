// template_syntax_test.cc - the syntax of template definitions and invocations.

#include "templates_fixture.h"

namespace zarel {
namespace {

TEST_F(RewriteTest, RefusesWhatIsNoTemplateSyntax) {
  for (const std::string_view text : {
           "#template u{p}(1) { }",    // no arity of a formal predicate
           "#template u{}(1) { }", "#template u{p(1)} { }", "#template u{p(1)}(1) GLOBAL { }",
           "a :- t{}(X).", "a :- t{p(*)}.", "a :- t{p()}(X).", "a :- t{p(_)}(X).",
           "a :- t{p(f(X))}(X).", "a :- t{p(*)}(f(X)).", "a :- t{p(*)}(*).", "a :- -t{p(*)}(X).",
           "1 = #count{X:t{p(*)}(X)}?", "#template u{p(1)}(1) { #template w{p(1)}(1) { }",
           "#template u{p(1)}(1) { p(X)?", "#template u{p(1)}(1) { u(X)@n :- p(X).",
           "#template u{p(1)}(1) { u :- p@n.",
           "#template u{p(1)}(1) { u(X) :- p(X).",    // the file ends within the body
       }) {
    const RewrittenProgram result = rewritten({COPY, text, "b@n."});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.messages, "2: line 1: syntax error.\nAborting due to parser errors.\n")
        << text;
  }
}

}    // namespace
}    // namespace zarel
