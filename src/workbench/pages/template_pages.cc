#include <array>

#include "workbench/pages/pages.h"

namespace workbench {
namespace {

constexpr auto kPages = std::to_array<Page>({
    {.code = "template-undefined",
     .title = "there is no template of that name",
     .meaning =
         R"(A name with braces behind it, in a body, uses a template. A definition of that
name was not read: is the name right, and is the file with the definition among
those that are named? The templates of the library are files of their own.
)",
     .wrong = R"(salary(lab, ann, 3000).
top(S) :- maxim{salary($, $, *)}(S).
)",
     .mended = R"(salary(lab, ann, 3000).
top(S) :- maxim{salary($, $, *)}(S).
#template maxim{value(1)}(1) {
  maxim(X) :- value(X), X = #max{Y : value(Y)}.
}
)"},
    {.code = "template-redefined",
     .title = "a template is defined a second time",
     .meaning =
         R"(A template has one definition. Two files may define the same name, and a file
may be named twice.
)",
     .wrong = R"(#template either{p(1), q(1)}(1) {
  either(X) :- p(X).
}
#template either{p(1), q(1)}(1) {
  either(X) :- q(X).
}
cat(tom).    dog(rex).
pet(X) :- either{cat(*), dog(*)}(X).
)",
     .mended = R"(#template either{p(1), q(1)}(1) {
  either(X) :- p(X).
  either(X) :- q(X).
}
cat(tom).    dog(rex).
pet(X) :- either{cat(*), dog(*)}(X).
)"},
    {.code = "formal-in-head",
     .title = "a formal predicate stands in a head",
     .meaning =
         R"(A formal predicate stands for what a use of the template gives it. A template
reads it and cannot add to it: heads are the template's own name, which is its
result, or names that the template has for itself.
)",
     .wrong = R"(#template reach{edge(2)}(2) {
  edge(X, Y) :- edge(Y, X).
  reach(X, Y) :- edge(X, Y).
}
road(york, leeds).
way(X, Y) :- reach{road(*, *)}(X, Y).
)",
     .mended = R"(#template reach{edge(2)}(2) {
  both(X, Y) :- edge(X, Y).
  both(X, Y) :- edge(Y, X).
  reach(X, Y) :- both(X, Y).
}
road(york, leeds).
way(X, Y) :- reach{road(*, *)}(X, Y).
)"},
    {.code = "global-in-head",
     .title = "a global predicate stands in a head of a template",
     .meaning =
         R"(The names behind GLOBAL are predicates of the program, which a template may
read. It cannot add to them: write such a rule outside of the template.
)",
     .wrong = R"(#template good{p(1)}(1) GLOBAL known {
  good(X) :- p(X), known(X).
  known(X) :- p(X).
}
known(ann).    person(ann).
fine(X) :- good{person(*)}(X).
)",
     .mended = R"(#template good{p(1)}(1) GLOBAL known {
  good(X) :- p(X), known(X).
}
known(ann).    person(ann).
known(X) :- person(X).
fine(X) :- good{person(*)}(X).
)"},
    {.code = "formal-arity",
     .title = "a formal predicate has another number of arguments",
     .meaning =
         R"(The number behind a formal predicate says how many arguments it has. In the
template's body it always has as many.
)",
     .wrong = R"(#template largest{value(1)}(1) {
  largest(X) :- value(X, _).
}
age(ann, 30).
oldest(X) :- largest{age($, *)}(X).
)",
     .mended = R"(#template largest{value(1)}(1) {
  largest(X) :- value(X).
}
age(ann, 30).
oldest(X) :- largest{age($, *)}(X).
)"},
    {.code = "global-arity",
     .title = "a global predicate has two numbers of arguments",
     .meaning =
         R"(With --literal-templates, a predicate behind GLOBAL has one number of arguments
in the whole program. Without that option it may have several, as any predicate.
)",
     .kind = ExampleKind::kCommand,
     .wrong = R"(zrl check --literal-templates - <<'END'
#template one{f(1)}(1) GLOBAL g { one(X) :- f(X), g(X). }
#template two{f(1)}(1) GLOBAL g { two(X) :- f(X), g(X, X). }
p(a).    g(a).    g(a, a).
q(X) :- one{p(*)}(X), two{p(*)}(X).
END
)",
     .mended = R"(zrl check - <<'END'
#template one{f(1)}(1) GLOBAL g { one(X) :- f(X), g(X). }
#template two{f(1)}(1) GLOBAL g { two(X) :- f(X), g(X, X). }
p(a).    g(a).    g(a, a).
q(X) :- one{p(*)}(X), two{p(*)}(X).
END
)"},
    {.code = "output-arity",
     .title = "the result of a template is read with another number of terms",
     .meaning =
         R"(The number in parentheses behind the braces of a definition says how many terms
the result has. A use of the template has as many in the parentheses behind its
braces.
)",
     .wrong = R"(#template largest{value(1)}(1) {
  largest(X) :- value(X).
}
age(ann, 30).
oldest(P, X) :- largest{age($, *)}(P, X).
)",
     .mended = R"(#template largest{value(1)}(1) {
  largest(X) :- value(X).
}
age(ann, 30).
oldest(P, X) :- largest{age(P, *)}(X).
)"},
    {.code = "actual-count",
     .title = "a template is given too many or too few predicates",
     .meaning =
         R"(A use of a template has a predicate in its braces for each of the formal
predicates in the braces of the definition, in the same order.
)",
     .wrong = R"(#template common{p(1), q(1)}(1) {
  common(X) :- p(X), q(X).
}
cook(ann).    singer(ann).
gifted(X) :- common{cook(*)}(X).
)",
     .mended = R"(#template common{p(1), q(1)}(1) {
  common(X) :- p(X), q(X).
}
cook(ann).    singer(ann).
gifted(X) :- common{cook(*), singer(*)}(X).
)"},
    {.code = "arity-clash",
     .title = "two uses give a template different numbers of predicates",
     .meaning =
         R"(Every use of a template has as many predicates in its braces as the definition
has formal ones. Here two uses differ, so at least one of them is wrong. This is
found while the program is read, before its templates are compared with their
definitions, and the reading ends there.
)",
     .wrong = R"(#template common{p(1), q(1)}(1) {
  common(X) :- p(X), q(X).
}
cook(ann).    singer(ann).    tall(ann).
gifted(X) :- common{cook(*), singer(*)}(X).
star(X) :- common{cook(*), singer(*), tall(*)}(X).
)",
     .mended = R"(#template common{p(1), q(1)}(1) {
  common(X) :- p(X), q(X).
}
cook(ann).    singer(ann).    tall(ann).
gifted(X) :- common{cook(*), singer(*)}(X).
star(X) :- common{singer(*), tall(*)}(X).
)"},
    {.code = "actual-arity",
     .title = "a predicate hands on too many or too few arguments",
     .meaning =
         R"(In the braces of a use, a predicate has a sign for each of its arguments: *
hands the argument on, $ leaves it out of account, and a variable, a constant or
a number makes a group of each value. There are as many * as the formal
predicate has arguments.
)",
     .wrong = R"(#template largest{value(1)}(1) {
  largest(X) :- value(X).
}
age(ann, 30).
oldest(X) :- largest{age(*, *)}(X).
)",
     .mended = R"(#template largest{value(1)}(1) {
  largest(X) :- value(X).
}
age(ann, 30).
oldest(X) :- largest{age($, *)}(X).
)"},
    {.code = "result-arity",
     .title = "the result of a template is defined with another number of arguments",
     .meaning =
         R"(The rules of a template that have its name in the head give its result. These
heads have as many arguments as the number in parentheses behind the braces of
the definition says.
)",
     .wrong = R"(#template pairs{p(1)}(1) {
  pairs(X, Y) :- p(X), p(Y).
}
town(york).
trip(X) :- pairs{town(*)}(X).
)",
     .mended = R"(#template pairs{p(1)}(2) {
  pairs(X, Y) :- p(X), p(Y).
}
town(york).
trip(X, Y) :- pairs{town(*)}(X, Y).
)"},
    {.code = "result-missing",
     .title = "no rule of a template gives its result",
     .meaning =
         R"(The result of a template is the predicate that has the template's own name. One
rule of it, at least, has that name in its head.
)",
     .wrong = R"(#template twice{value(1)}(1) {
  double(Y) :- value(X), Y = X + X.
}
age(30).
result(X) :- twice{age(*)}(X).
)",
     .mended = R"(#template twice{value(1)}(1) {
  twice(Y) :- value(X), Y = X + X.
}
age(30).
result(X) :- twice{age(*)}(X).
)"},
    {.code = "endless-expansion",
     .title = "a template invokes itself without an end",
     .meaning =
         R"(A template may invoke itself, or another one that invokes it, with the
predicates that it was given itself. With a predicate of its own, each expansion
has another one, and there would be ever new expansions.
)",
     .wrong = R"(#template reach{edge(2)}(2) {
  reach(X, Y) :- edge(X, Y).
  back(X, Y) :- edge(Y, X).
  reach(X, Y) :- reach{back(*, *)}(X, Y).
}
road(york, leeds).
way(X, Y) :- reach{road(*, *)}(X, Y).
)",
     .mended = R"(#template reach{edge(2)}(2) {
  reach(X, Y) :- edge(X, Y).
  reach(X, Z) :- edge(X, Y), reach{edge(*, *)}(Y, Z).
}
road(york, leeds).
way(X, Y) :- reach{road(*, *)}(X, Y).
)"},
});

}    // namespace

std::span<const Page> template_pages() {
  return kPages;
}

}    // namespace workbench
