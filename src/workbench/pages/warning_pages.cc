#include <array>

#include "workbench/pages/pages.h"

namespace workbench {
namespace {

constexpr auto kWarning = Severity::kWarning;

constexpr std::array kPages = std::to_array<Page>({
    {.code = "unsafe-variable",
     .title = "a variable has no value",
     .meaning =
         R"(Every variable of a head, of a literal under "not" and of a comparison needs a
value, and gets it from a literal of the body that is not under "not": an
atom, a frame, a template, a sum or product, "==" beside something known, or
an aggregate with "=". A variable that nothing gives a value could be
anything, and the rule would have infinitely many instances. Often its name is
mistyped.
)",
     .wrong = R"(road(ash, birch).
far(X, Y) :- road(X, Z).
)",
     .mended = R"(road(ash, birch).
far(X, Y) :- road(X, Y).
)"},
    {.code = "upper-case-fact",
     .title = "a fact holds a variable",
     .meaning = R"(A word that begins with an upper-case letter is a variable, and in a fact
there is nothing to give it a value. A constant begins with a lower-case
letter, or stands in double quotes.
)",
     .wrong = R"(person(Ann).
)",
     .mended = R"(person(ann).
person("Bob").
)"},
    {.code = "never-given",
     .severity = kWarning,
     .title = "something is used that nothing gives",
     .meaning = R"(A literal asks for a predicate, an attribute or a class that no fact, no rule
and no included text gives: it never holds. Mostly the name is mistyped, or
the file with the facts was not named on the command line. There is one
message for each name, at the first place.
)",
     .wrong = R"(road(ash, birch).
town(X) :- raod(X, _).
)",
     .mended = R"(road(ash, birch).
town(X) :- road(X, _).
)"},
    {.code = "other-arity",
     .severity = kWarning,
     .title = "a predicate is used with another number of arguments",
     .meaning = R"(Predicates of one name and different numbers of arguments have nothing to do
with each other. This one is used with a number of arguments with which
nothing gives it, so that the literal never holds.
)",
     .wrong = R"(salary(ann, sales, 3100).
paid(P) :- salary(P, _).
)",
     .mended = R"(salary(ann, sales, 3100).
paid(P) :- salary(P, _, _).
)"},
    {.code = "never-used",
     .severity = kWarning,
     .is_on = false,
     .title = "a predicate is given and nothing uses it",
     .meaning = R"(Facts or rules give a predicate that no body, no query and no included text
uses. That is as it should be for what the answers are to show, so this
warning is off unless it is asked for.
)",
     .wrong = R"(town(ash).
road(ash, birch).
road(X, Y)?
)",
     .mended = R"(road(ash, birch).
road(X, Y)?
)"},
    {.code = "single-variable",
     .severity = kWarning,
     .title = "a variable occurs once in its statement",
     .meaning = R"(A variable joins the places where it stands. One that occurs in a single place
joins nothing: its name may be mistyped. Where any value will do, write "_".
)",
     .wrong = R"(road(ash, birch).
town(Here) :- road(Here, There).
)",
     .mended = R"(road(ash, birch).
town(Here) :- road(Here, _).
)"},
    {.code = "constant-rule",
     .severity = kWarning,
     .title = "a rule has constants where variables were meant",
     .meaning = R"(The rule has no variables, and the same lower-case word in its head and in its
body, which occurs nowhere else in the program. A lower-case word is a
constant, so the rule speaks of this one thing only.
)",
     .wrong = R"(person(ann).
mortal(x) :- person(x).
)",
     .mended = R"(person(ann).
mortal(X) :- person(X).
)"},
    {.code = "quoted-and-plain",
     .severity = kWarning,
     .title = "a constant stands with quotes and without",
     .meaning = R"(Quotes belong to a constant: ann and "ann" are two constants, and a literal
with the one never matches a fact with the other.
)",
     .wrong = R"(person("ann").
age(ann, 30).
)",
     .mended = R"(person(ann).
age(ann, 30).
)"},
    {.code = "contradiction",
     .severity = kWarning,
     .title = "two facts contradict each other",
     .meaning = R"(A fact says that something is true, another one, with "-", that it is false.
No answer set holds both, so that the program has none.
)",
     .wrong = R"(open(monday).
-open(monday).
)",
     .mended = R"(open(monday).
-open(sunday).
)"},
    {.code = "class-attributes",
     .severity = kWarning,
     .title = "attributes behind a membership belong to the class",
     .meaning = R"(In "ann : person[age -> 3]" the attributes are those of the class: it says
that ann is a person, and that the class person has the age 3. An attribute of
the object stands in a frame of its own. There is no message where the class
has frames of its own elsewhere.
)",
     .wrong = R"(ann : person[age -> 3].
)",
     .mended = R"(ann : person.
ann[age -> 3].
)"},
    {.code = "other-arrow",
     .severity = kWarning,
     .title = "an attribute is used with another arrow than it is given with",
     .meaning =
         R"(The arrows keep statements apart: what is given with => is not found with ->,
what is given with a value not without one. This attribute is never given as
it is used here.
)",
     .wrong = R"(ann[age => 30].
old(X) :- X[age -> 30].
)",
     .mended = R"(ann[age -> 30].
old(X) :- X[age -> 30].
)"},
    {.code = "mixed-rows",
     .severity = kWarning,
     .title = "one object gets the values of many rows",
     .meaning = R"(The head is a frame with a constant for its object, and its value comes from
the rows of a relation: the one object gets the values of all of them, and
nothing tells which belong together. The object has to differ from row to row.
When many values are meant, the arrow ->> says so.
)",
     .wrong = R"(salary(ann, 3100).
salary(bob, 2900).
entry[name -> P, amount -> S] :- salary(P, S).
)",
     .mended = R"(salary(ann, 3100).
salary(bob, 2900).
entry(P)[name -> P, amount -> S] :- salary(P, S).
)"},
    {.code = "conditional-literal",
     .severity = kWarning,
     .title = "what looks like a conditional literal is a membership",
     .meaning = R"(Behind the sign ":" stands a class. So q(X) : p(X) says that the object q(X)
is a member of the class p(X). There are no conditional literals. What holds
"for all" is said by a rule for the exceptions, and "not" that.
)",
     .wrong = R"(task(1). task(2).
done(1).
finished :- done(X) : task(X).
)",
     .mended = R"(task(1). task(2).
done(1).
unfinished :- task(X), not done(X).
finished :- not unfinished.
)"},
    {.code = "weight-cut",
     .severity = kWarning,
     .title = "a weight loses its fraction",
     .meaning = R"(Weights may be written with a fraction, but the solver counts whole numbers:
the fraction is cut off, and 0.5 costs nothing. Multiply all weights instead.
)",
     .wrong = R"(late(ann).
:~ late(_). [1.5:1]
)",
     .mended = R"(late(ann).
:~ late(_). [3:1]
)"},
    {.code = "unknown-filter",
     .severity = kWarning,
     .title = "a filter names nothing of the program",
     .meaning = R"(The option --filter shows what it names, and nothing else. No predicate,
attribute or class of the program is named so, with this number of arguments if
one is given, and nothing will be shown for it. A name alone is one of a
predicate: [age] names an attribute, and :person the members of a class.
)",
     .kind = ExampleKind::kCommand,
     .wrong = R"(echo "road(ash, birch)." | zrl check --filter=raod -
)",
     .mended = R"(echo "road(ash, birch)." | zrl check --filter=road -
)"},
    {.code = "no-query",
     .severity = kWarning,
     .title = "an option for the query, and no query",
     .meaning = R"(The options --brave and --cautious say whether the answers of a query hold in
some answer set or in all of them. Without a query the program's answer sets are
printed, whichever option is given.
)",
     .kind = ExampleKind::kCommand,
     .wrong = R"(echo "road(ash, birch)." | zrl --brave -
)",
     .mended = R"(echo "road(ash, birch). road(ash, X)?" | zrl --brave -
)"},
    {.code = "query-in-function",
     .severity = kWarning,
     .title = "a query does not tell the values inside a function term",
     .meaning =
         R"(A query answers for a variable that stands inside function terms only when a
plain variable stands beside it in the same literal. Else it is left out of
the answers. Let it occur outside of function terms, too.
)",
     .wrong = R"(given(box(1)).
given(box(X))?
)",
     .mended = R"(given(box(1)).
given(box(X)), X == X?
)"},
    {.code = "unused-template",
     .severity = kWarning,
     .title = "a template is never used",
     .meaning = R"(The program defines a template that no rule and no used template invokes. It
is not expanded, and not checked. Files from which some template is used may
hold others.
)",
     .wrong = R"(#template first{element(1)}(1) {
  first(X) :- element(X), X = #min{Y : element(Y)}.
}
number(3).
)",
     .mended = R"(#template first{element(1)}(1) {
  first(X) :- element(X), X = #min{Y : element(Y)}.
}
number(3).
least(X) :- first{number(*)}(X).
)"},
    {.code = "unread-formal",
     .severity = kWarning,
     .title = "a template does not read a formal predicate",
     .meaning = R"(The template asks every use for a predicate that none of its clauses reads.
)",
     .wrong = R"(#template both{left(1), right(1)}(1) {
  both(X) :- left(X).
}
)",
     .mended = R"(#template both{left(1), right(1)}(1) {
  both(X) :- left(X), right(X).
}
)"},
    {.code = "endless-recursion",
     .severity = kWarning,
     .title = "a recursion makes ever more",
     .meaning =
         R"(A rule builds, out of what it gives itself, a longer term or a greater number
each time, and nothing in the program bounds it: the solver may never end. The
notes tell the way round, rule by rule. Let a comparison or another literal
bound it; numbers are bounded by #maxint, too.
)",
     .wrong = R"(number(0).
number(N) :- number(M), N = M + 1.
)",
     .mended = R"(number(0).
number(N) :- number(M), N = M + 1, M < 10.
)"},
    {.code = "never-fires",
     .severity = kWarning,
     .title = "a rule never applies",
     .meaning = R"(What the rule needs is given only by rules that need, in the end, what this
rule gives. Without a fact, or a rule that begins elsewhere, none of them ever
applies.
)",
     .wrong = R"(knows(X, Y) :- met(Y, X).
met(X, Y) :- knows(Y, X).
)",
     .mended = R"(introduced(ann, bob).
knows(X, Y) :- met(Y, X).
met(X, Y) :- knows(Y, X).
met(X, Y) :- introduced(X, Y).
)"},
});

}    // namespace

std::span<const Page> warning_pages() {
  return kPages;
}

}    // namespace workbench
