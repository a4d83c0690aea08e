// foreign_pages.cc - what other languages have, and what there is instead.

#include "workbench/pages/pages.h"

namespace workbench {
namespace {

constexpr Page kPages[] = {
    {.code = "arithmetic-term",
     .title = "something is computed in the middle of a term",
     .meaning = "Arguments and the sides of a comparison are plain terms. A sum or a product\n"
                "is a literal of its own, Z = X + Y or Z = X * Y, whose result is then used.\n"
                "There is no subtraction and no division; but as any of the three may be the\n"
                "unknown one, \"N is X less 1\" is X = N + 1.\n",
     .wrong = "before(X, X-1) :- day(X).\n"
              "day(2).\n",
     .mended = "before(X, N) :- day(X), X = N + 1.\n"
               "day(2).\n"},
    {.code = "single-equals",
     .title = "= where == is meant",
     .meaning = "Equality is ==. A single = stands in front of a sum, a product or an\n"
                "aggregate only: X = Y + 1.\n",
     .wrong = "home(X) :- town(X), X = paris.\n"
              "town(paris).\n",
     .mended = "home(X) :- town(X), X == paris.\n"
               "town(paris).\n"},
    {.code = "is-operator",
     .title = "is where = is meant",
     .meaning = "The result of a sum or a product is given with =.\n",
     .wrong = "next(X, N) :- day(X), N is X + 1.\n"
              "day(2).\n",
     .mended = "next(X, N) :- day(X), N = X + 1.\n"
               "day(2).\n"},
    {.code = "negative-number",
     .title = "a number is negative",
     .meaning = "Integers go from 0 to #maxint. Values that may be negative are moved up by\n"
                "the same amount, all of them.\n",
     .wrong = "depth(lake, -3).\n",
     .mended = "depth(lake, 3).\n"},
    {.code = "negated-term",
     .title = "- in front of a term",
     .meaning = "The sign - is strong negation, and stands in front of atoms and frames. A\n"
                "term has no negation.\n",
     .wrong = "side(-left).\n",
     .mended = "side(left).\n"},
    {.code = "decimal-number",
     .title = "a number has a fraction",
     .meaning = "Numbers are whole. Count in a smaller unit: 15 tenths for 1.5, and the same\n"
                "unit everywhere. Only weights of weak constraints may be written with a\n"
                "fraction.\n",
     .wrong = "width(door, 1.5).\n",
     .mended = "width(door, 15).\n"},
    {.code = "misplaced-range",
     .title = "a range beside something else",
     .meaning = "A range such as slot(1..5). is the only argument of a fact, and goes from a\n"
                "number to a number. In rules, the values come from #int(X), X >= 1, X <= 5,\n"
                "or from a fact with the range.\n",
     .wrong = "#maxint = 5.\n"
              "slot(room, 1..3).\n",
     .mended = "#maxint = 5.\n"
               "slot(room, X) :- number(X).\n"
               "number(1..3).\n"},
    {.code = "pooling",
     .title = "; in an argument",
     .meaning = "An argument is one term. Facts that differ in one argument are written one\n"
                "by one.\n",
     .wrong = "town(paris; rome).\n",
     .mended = "town(paris). town(rome).\n"},
    {.code = "list-term",
     .title = "a list",
     .meaning = "There are no lists. A function term can hold one: cons(a, cons(b, nil)).\n",
     .wrong = "given([a, b]).\n",
     .mended = "given(cons(a, cons(b, nil))).\n"},
    {.code = "set-membership",
     .title = "a set of values beside a variable",
     .meaning = "A literal says that a relation holds, and there is none of membership in a\n"
                "set that is written down. Give the values a predicate, with a fact for each,\n"
                "and use that. Integers from a bound to a bound are #int(X), X >= 1, X <= 5.\n",
     .wrong = "shown(X) :- X in {red, blue}.\n",
     .mended = "value(red). value(blue).\n"
               "shown(X) :- value(X).\n"},
    {.code = "field-access",
     .title = "an attribute behind a full stop",
     .meaning = "A full stop ends a statement. The attribute of an object stands in brackets\n"
                "behind it, with an arrow in front of its value: ann[age -> 30]. In a body\n"
                "the value may be a variable, which is then compared.\n",
     .wrong = "ann.age = 30.\n",
     .mended = "ann[age -> 30].\n"},
    {.code = "sql-statement",
     .title = "a statement of SQL",
     .meaning = "What a database has in a row is a fact, a view is a rule, and a query is\n"
                "written like a body with a question mark behind it. Relations are not\n"
                "declared, and nothing that holds is taken back.\n",
     .wrong = "staff(ann, 30).\n"
              "SELECT name FROM staff WHERE age > 20.\n",
     .mended = "staff(ann, 30).\n"
               "staff(Name, Age), Age > 20?\n"},
    {.code = "absolute-value",
     .title = "bars around a term",
     .meaning = "Integers are never negative, so there is no absolute value. How far two\n"
                "integers are apart is said in two rules, one for each order.\n",
     .wrong = "apart(X, Y, D) :- day(X), day(Y), D = |X - Y|.\n"
              "day(2).\n",
     .mended = "apart(X, Y, D) :- day(X), day(Y), X = Y + D.\n"
               "apart(X, Y, D) :- day(X), day(Y), Y = X + D.\n"
               "day(2).\n"},
    {.code = "extreme-term",
     .title = "a value below or above all others",
     .meaning = "There is no value that comes before or behind all others. Integers go from 0\n"
                "to #maxint, which a program declares.\n",
     .wrong = "early(X) :- day(X), X < #sup.\n"
              "day(2).\n",
     .mended = "#maxint = 100.\n"
               "early(X) :- day(X), X < #maxint.\n"
               "day(2).\n"},
    {.code = "positive-sum",
     .title = "#sum+",
     .meaning = "Integers are never negative, so that #sum adds up what #sum+ would.\n",
     .wrong = "total(S) :- S = #sum+{P, X : price(X, P)}.\n"
              "price(pen, 2).\n",
     .mended = "total(S) :- S = #sum{P, X : price(X, P)}.\n"
               "price(pen, 2).\n"},
    {.code = "parenthesised-term",
     .title = "parentheses without a name",
     .meaning = "Parentheses stand behind the name of a predicate or of a function. Terms are\n"
                "not grouped, there are no tuples without a name, and literals are not\n"
                "grouped in a body.\n",
     .wrong = "place((3, 4)).\n",
     .mended = "place(point(3, 4)).\n"},
    {.code = "empty-arguments",
     .title = "parentheses with nothing between them",
     .meaning = "An atom without arguments is written without parentheses.\n",
     .wrong = "raining().\n",
     .mended = "raining.\n"},
    {.code = "sign-in-name",
     .title = "a name has a sign in it",
     .meaning = "Names are made of letters, digits and _. A constant with anything else in it\n"
                "is written in double quotes. There are no primes: write X1 or X_new instead\n"
                "of X'.\n",
     .wrong = "town(new-york).\n",
     .mended = "town(\"new-york\").\n"},
    {.code = "single-quotes",
     .title = "a constant in single quotes",
     .meaning = "Quoted constants have double quotes. ann and \"ann\" are two constants.\n",
     .wrong = "town('St. Ives').\n",
     .mended = "town(\"St. Ives\").\n"},
    {.code = "typographic-quotes",
     .title = "a constant in typographic quotes",
     .meaning = "Quoted constants have the double quotes of ASCII. Word processors replace\n"
                "them with others.\n",
     .wrong = "town(\u201CSt. Ives\u201D).\n",
     .mended = "town(\"St. Ives\").\n"},
    {.code = "foreign-comment",
     .title = "a comment that begins with another sign",
     .meaning = "A comment begins with % and goes to the end of its line.\n",
     .wrong = "// all towns\n"
              "town(paris).\n",
     .mended = "% all towns\n"
               "town(paris).\n"},
    {.code = "block-comment",
     .title = "a comment of several lines",
     .meaning = "A comment begins with % and goes to the end of its line; %* begins one like\n"
                "any other. Each line of a longer comment has a % of its own.\n",
     .wrong = "%* all towns,\n"
              "   by size *%\n"
              "town(paris).\n",
     .mended = "% all towns,\n"
               "% by size\n"
               "town(paris).\n"},
    {.code = "starred-comment",
     .severity = Severity::kWarning,
     .title = "text behind *% in a comment",
     .meaning = "A comment goes on to the end of its line, whatever it begins with: *% does\n"
                "not end it, and a statement behind that is not read.\n",
     .wrong = "%* towns *% town(paris).\n",
     .mended = "% towns\n"
               "town(paris).\n"},
    {.code = "rule-arrow",
     .title = "a rule with another sign than :-",
     .meaning = "A rule is written head :- body, or head <- body: the conclusion first. There\n"
                "is no rule in the other direction, and none in both.\n",
     .wrong = "wet := rain.\n"
              "rain.\n",
     .mended = "wet :- rain.\n"
               "rain.\n"},
    {.code = "second-rule-sign",
     .title = "a rule has a second :-",
     .meaning = "A rule has one :- between its head and its body. A second one begins another\n"
                "rule, whose first part is to be ended with a full stop, or a comma is meant.\n",
     .wrong = "wet :- rain :- cloud.\n"
              "rain. cloud.\n",
     .mended = "wet :- rain, cloud.\n"
               "rain. cloud.\n"},
    {.code = "comma-in-head",
     .title = "a comma in front of :-, or in a fact",
     .meaning = "A comma joins the literals of a body or of a query. A head has one atom or a\n"
                "disjunction: two conclusions are two rules. A query ends with a question\n"
                "mark.\n",
     .wrong = "wet, cold :- rain.\n"
              "rain.\n",
     .mended = "wet :- rain.\n"
               "cold :- rain.\n"
               "rain.\n"},
    {.code = "not-in-head",
     .title = "not in a head",
     .meaning = "Default negation stands in bodies only. What is known to be false is written\n"
                "with -, and what must not hold as a constraint.\n",
     .wrong = "not dry :- rain.\n"
              "rain.\n",
     .mended = "-dry :- rain.\n"
               "rain.\n"},
    {.code = "comparison-in-head",
     .title = "a head that is no atom",
     .meaning = "A head holds atoms and frames. Comparisons, arithmetic and aggregates are\n"
                "conditions, and stand in bodies. What has to hold is written as a constraint\n"
                "on its opposite.\n",
     .wrong = "X < 3 :- slot(X).\n"
              "slot(2).\n",
     .mended = ":- slot(X), X >= 3.\n"
               "slot(2).\n"},
    {.code = "invocation-in-head",
     .title = "a template is invoked in a head",
     .meaning = "Templates are invoked in bodies, where they stand like an atom.\n",
     .wrong = "#template same{p(1)}(1) {\n"
              "  same(X) :- p(X).\n"
              "}\n"
              "same{a(*)}(X) :- b(X).\n"
              "a(1). b(1).\n",
     .mended = "#template same{p(1)}(1) {\n"
               "  same(X) :- p(X).\n"
               "}\n"
               "c(X) :- b(X), same{a(*)}(X).\n"
               "a(1). b(1).\n"},
    {.code = "body-alternative",
     .title = "a disjunction in a body",
     .meaning = "The signs v, | and ; stand in heads. A body has no alternatives: write a\n"
                "rule for each. Where ; joins literals that all have to hold, write a comma.\n",
     .wrong = "wet :- rain; snow.\n"
              "rain. snow.\n",
     .mended = "wet :- rain.\n"
               "wet :- snow.\n"
               "rain. snow.\n"},
    {.code = "disjunction-sign",
     .title = "another sign for a disjunction",
     .meaning = "The atoms of a head are joined with v, | or ;.\n",
     .wrong = "rain or snow.\n",
     .mended = "rain v snow.\n"},
    {.code = "disjunction-name",
     .title = "v where a name is meant",
     .meaning = "The word v is the sign of a disjunction. As a name it stands only in\n"
                "arguments and in front of parentheses.\n",
     .wrong = "fast :- v.\n",
     .mended = "fast :- speed.\n"
               "speed.\n"},
    {.code = "conjunction-sign",
     .title = "another sign for a conjunction",
     .meaning = "The literals of a body are joined with commas.\n",
     .wrong = "wet :- rain and cold.\n"
              "rain. cold.\n",
     .mended = "wet :- rain, cold.\n"
               "rain. cold.\n"},
    {.code = "negation-sign",
     .title = "another sign for not",
     .meaning = "Default negation is written not, in small letters. Strong negation is\n"
                "written -.\n",
     .wrong = "dry :- !rain.\n"
              "rain v sun.\n",
     .mended = "dry :- not rain.\n"
               "rain v sun.\n"},
    {.code = "double-negation",
     .title = "not not",
     .meaning = "In front of an atom stands one not at most. A predicate for the inner\n"
                "negation does the same.\n",
     .wrong = "maybe :- not not rain.\n"
              "rain v sun.\n",
     .mended = "maybe :- not no_rain.\n"
               "no_rain :- not rain.\n"
               "rain v sun.\n"},
    {.code = "negated-comparison",
     .title = "not in front of a comparison",
     .meaning = "Comparisons have no negation: the opposite comparison says the same.\n",
     .wrong = "big(X) :- slot(X), not X < 3.\n"
              "slot(4).\n",
     .mended = "big(X) :- slot(X), X >= 3.\n"
               "slot(4).\n"},
    {.code = "comparison-slip",
     .title = "a comparison is spelled otherwise",
     .meaning = "The comparisons are ==, !=, <>, <, <=, > and >=.\n",
     .wrong = "small(X) :- slot(X), X =< 3.\n"
              "slot(2).\n",
     .mended = "small(X) :- slot(X), X <= 3.\n"
               "slot(2).\n"},
    {.code = "comparison-chain",
     .title = "a comparison with three sides",
     .meaning = "A comparison has two sides. Only an aggregate may have a bound on each side.\n",
     .wrong = "mid(X) :- slot(X), 1 < X < 3.\n"
              "slot(2).\n",
     .mended = "mid(X) :- slot(X), 1 < X, X < 3.\n"
               "slot(2).\n"},
    {.code = "cut",
     .title = "a cut",
     .meaning = "Rules and literals have no order, so there is nothing to cut off. What\n"
                "excludes another rule is said with literals.\n",
     .wrong = "first(X) :- slot(X), !.\n"
              "slot(2).\n",
     .mended = "first(X) :- X = #min{Y : slot(Y)}.\n"
               "slot(2).\n"},
    {.code = "choice-rule",
     .title = "a choice in braces",
     .meaning = "There are no choice rules. A disjunction chooses one of its atoms: in(X) v\n"
                "out(X) :- item(X). Bounds are constraints with an aggregate: :- not 1 <=\n"
                "#count{X : in(X)} <= 2. In a body, #count counts.\n",
     .wrong = "{in(X)} :- item(X).\n"
              "item(a).\n",
     .mended = "in(X) v out(X) :- item(X).\n"
               "item(a).\n"},
    {.code = "aggregate-comparison",
     .title = "an aggregate is compared with == or !=",
     .meaning = "Aggregates are compared with =, <, <=, > and >=, and with a variable or a\n"
                "number, not with another aggregate. What is not equal is written with not in\n"
                "front: not #count{X : p(X)} = 3.\n",
     .wrong = "full :- #count{X : in(X)} == 2.\n"
              "in(a). in(b).\n",
     .mended = "full :- #count{X : in(X)} = 2.\n"
               "in(a). in(b).\n"},
    {.code = "aggregate-guard",
     .title = "an aggregate is compared with nothing",
     .meaning = "An aggregate is a value, not a condition: it is compared with a number or a\n"
                "variable.\n",
     .wrong = "any :- #count{X : in(X)}.\n"
              "in(a).\n",
     .mended = "any :- 1 <= #count{X : in(X)}.\n"
               "in(a).\n"},
    {.code = "aggregate-variables",
     .title = "something else than variables in front of the colon of an aggregate",
     .meaning = "In the braces of an aggregate stand variables, a colon, and literals that\n"
                "give them their values. A weight is the first variable: #sum{W, X : cost(X,\n"
                "W)}.\n",
     .wrong = "full :- 2 <= #count{in(X)}.\n"
              "in(a). in(b).\n",
     .mended = "full :- 2 <= #count{X : in(X)}.\n"
               "in(a). in(b).\n"},
    {.code = "aggregate-set",
     .title = "an aggregate has several sets",
     .meaning = "The braces of an aggregate hold one set. Several sets become one by a\n"
                "predicate that has a rule for each.\n",
     .wrong = "full :- 2 <= #count{X : in(X); Y : out(Y)}.\n"
              "in(a). out(b).\n",
     .mended = "full :- 2 <= #count{X : any(X)}.\n"
               "any(X) :- in(X).\n"
               "any(X) :- out(X).\n"
               "in(a). out(b).\n"},
    {.code = "inner-aggregate",
     .title = "an aggregate in an aggregate",
     .meaning = "The literals in the braces of an aggregate are atoms, comparisons and\n"
                "arithmetic. An inner aggregate gets a rule of its own.\n",
     .wrong = "full :- 1 <= #count{X : 1 <= #count{Y : in(X, Y)}}.\n"
              "in(a, b).\n",
     .mended = "full :- 1 <= #count{X : used(X)}.\n"
               "used(X) :- in(X, _).\n"
               "in(a, b).\n"},
    {.code = "show-directive",
     .title = "#show",
     .meaning = "A program does not say what is shown. The option --filter of the command\n"
                "does, with the names of predicates.\n",
     .wrong = "town(paris).\n"
              "#show town/1.\n",
     .mended = "town(paris).\n"},
    {.code = "const-directive",
     .title = "#const",
     .meaning = "There are no named constants. A fact with the value does the same, and\n"
                "#maxint for the largest integer.\n",
     .wrong = "#const size = 3.\n"
              "small(X) :- slot(X), X < size.\n"
              "slot(2).\n",
     .mended = "size(3).\n"
               "small(X) :- slot(X), size(S), X < S.\n"
               "slot(2).\n"},
    {.code = "minimize-directive",
     .title = "#minimize or #maximize",
     .meaning = "What is best is told by weak constraints: each instance of the body costs\n"
                "its weight, at its level, and the answer sets with the least cost are given.\n"
                "To have much of something, weigh what is lost.\n",
     .wrong = "rain v sun.\n"
              "#minimize{1 : rain}.\n",
     .mended = "rain v sun.\n"
               ":~ rain. [1:1]\n"},
    {.code = "query-form",
     .title = "a query that begins with its question mark",
     .meaning = "A query is a conjunction with a question mark behind it, and without a full\n"
                "stop.\n",
     .wrong = "?- town(X).\n"
              "town(paris).\n",
     .mended = "town(paris).\n"
               "town(X)?\n"},
    {.code = "frame-arrow",
     .title = "an attribute with another sign than an arrow",
     .meaning = "An attribute of a frame gets its value by an arrow: -> for one value, ->>\n"
                "for a set of them.\n",
     .wrong = "mary[age = 30].\n",
     .mended = "mary[age -> 30].\n"},
    {.code = "frame-term",
     .title = "something that is no object or class",
     .meaning = "Objects are names, quoted texts, integers, variables or function terms;\n"
                "classes are the same but for integers. The sign _ stands for values only.\n",
     .wrong = "grown :- _[age -> 30].\n"
              "mary[age -> 30].\n",
     .mended = "grown(X) :- X[age -> 30].\n"
               "mary[age -> 30].\n"},
};

}    // namespace

std::span<const Page> foreign_pages() {
  return kPages;
}

}    // namespace workbench
