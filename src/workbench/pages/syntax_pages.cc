// syntax_pages.cc - what the scanner and the grammar refuse.

#include "workbench/pages/pages.h"

namespace workbench {
namespace {

constexpr Page kPages[] = {
    {.code = "syntax-error",
     .title = "something stands where it cannot",
     .meaning = "The grammar knows nothing that goes on like this. The message names what\n"
                "could stand there; the mistake itself may be a little further to the left.\n"
                "The rest of the statement is left out, and reading goes on behind its full\n"
                "stop.\n",
     .wrong = "town(paris) (x).\n",
     .mended = "town(paris).\n"},
    {.code = "missing-full-stop",
     .title = "a statement does not end",
     .meaning = "Facts, rules, constraints and #maxint end with a full stop, queries with a\n"
                "question mark. Here the next statement begins, or the text ends, in front of\n"
                "it. Reading goes on with the next statement.\n",
     .wrong = "town(paris)\n"
              "town(rome).\n",
     .mended = "town(paris).\n"
               "town(rome).\n"},
    {.code = "missing-comma",
     .title = "two literals or terms stand side by side",
     .meaning = "The literals of a body are joined with commas, as are the arguments of an\n"
                "atom. If the second one begins a statement of its own, a full stop is\n"
                "missing instead.\n",
     .wrong = "near(X, Y) :- road(X, Y) short(X).\n"
              "road(a, b). short(a).\n",
     .mended = "near(X, Y) :- road(X, Y), short(X).\n"
               "road(a, b). short(a).\n"},
    {.code = "trailing-comma",
     .title = "there is nothing on one side of a comma",
     .meaning = "A comma stands between two literals or terms. One at the end or at the\n"
                "beginning of a list, or a second one, joins nothing.\n",
     .wrong = "near(X) :- road(X, X), .\n"
              "road(a, a).\n",
     .mended = "near(X) :- road(X, X).\n"
               "road(a, a).\n"},
    {.code = "stray-full-stop",
     .title = "a full stop ends nothing",
     .meaning = "A full stop stands behind facts, rules and constraints. A query ends with\n"
                "its question mark alone, and #include and #namespace end without any sign.\n",
     .wrong = "town(paris)..\n",
     .mended = "town(paris).\n"},
    {.code = "empty-body",
     .title = "nothing follows :-",
     .meaning = "Behind :- stands a body, which has one literal at least. A fact is written\n"
                "without it.\n",
     .wrong = "town(paris) :- .\n",
     .mended = "town(paris).\n"},
    {.code = "unclosed-parenthesis",
     .title = "a parenthesis is not closed",
     .meaning = "The statement ends, or another kind of bracket is closed, while a\n"
                "parenthesis is open. The message shows where it was opened, and where it was\n"
                "missed.\n",
     .wrong = "town(paris.\n",
     .mended = "town(paris).\n"},
    {.code = "unclosed-bracket",
     .title = "a bracket [ is not closed",
     .meaning = "The statement ends, or another kind of bracket is closed, while a bracket of\n"
                "a frame or of a weight is open.\n",
     .wrong = "mary[age -> 30.\n",
     .mended = "mary[age -> 30].\n"},
    {.code = "unclosed-brace",
     .title = "a brace is not closed",
     .meaning = "The braces of an aggregate, of a set of values, of a template invocation or\n"
                "of a template definition are not closed. A definition ends with a brace\n"
                "behind the last of its rules.\n",
     .wrong = "full :- 2 <= #count{X : in(X).\n"
              "in(a). in(b).\n",
     .mended = "full :- 2 <= #count{X : in(X)}.\n"
               "in(a). in(b).\n"},
    {.code = "unopened-bracket",
     .title = "a bracket closes nothing",
     .meaning = "There is a closing parenthesis, bracket or brace without one that it closes.\n",
     .wrong = "town(paris)).\n",
     .mended = "town(paris).\n"},
    {.code = "unclosed-string",
     .title = "a string is not closed",
     .meaning = "A text in double quotes goes on to the next double quote, over line ends\n"
                "too. When one is forgotten, everything behind is read the wrong way round,\n"
                "so reading stops there. There is no way to write a double quote inside.\n",
     .wrong = "town(\"St. Ives).\n",
     .mended = "town(\"St. Ives\").\n"},
    {.code = "escaped-quote",
     .title = "a double quote inside a quoted constant",
     .meaning = "A text in double quotes ends at the next double quote. There is no escape,\n"
                "so no double quote stands inside; a single one may.\n",
     .wrong = "title(\"the \\\"book\\\"\").\n",
     .mended = "title(\"the 'book'\").\n"},
    {.code = "unclosed-verbatim",
     .title = "an ASITIS section is not closed",
     .meaning = "What stands between ASITIS %* and *% is copied to the solver's input. The\n"
                "file ends in such a section.\n",
     .wrong = "town(paris).\n"
              "ASITIS %*\n",
     .mended = "town(paris).\n"},
    {.code = "unknown-character",
     .title = "a character belongs nowhere",
     .meaning = "Outside of quoted texts and comments, programs are written in ASCII. The\n"
                "message tells the code point of the character, and what is written instead\n"
                "where that is plain. A byte that is no UTF-8 is told as a byte: the file was\n"
                "saved in another encoding.\n",
     .wrong = "slot(1\u20265).\n"
              "#maxint = 5.\n",
     .mended = "#maxint = 5.\n"
               "slot(1..5).\n"},
    {.code = "foreign-letter",
     .title = "a name has letters other than a to z",
     .meaning = "Names are made of the letters a to z, A to Z, digits and _. A constant with\n"
                "other letters is written in double quotes.\n",
     .wrong = "town(k\u00F6ln).\n",
     .mended = "town(\"k\u00F6ln\").\n"},
    {.code = "long-identifier",
     .title = "a name is too long",
     .meaning = "Names and quoted texts have 1001 characters at most. Longer ones are cut\n"
                "off, so that two of them may become the same.\n",
     .kind = ExampleKind::kNone},
    {.code = "underscore-identifier",
     .title = "a name begins with _",
     .meaning = "A name begins with a letter: a variable with a capital one, a constant or\n"
                "predicate with a small one. The sign _ alone is a variable whose value does\n"
                "not matter.\n",
     .wrong = "rich(X) :- owns(X, _thing).\n"
              "owns(ann, house).\n",
     .mended = "rich(X) :- owns(X, _).\n"
               "owns(ann, house).\n"},
    {.code = "long-number",
     .title = "a number has too many digits",
     .meaning = "Numbers have nine digits at most. What is only a name, such as a telephone\n"
                "number, may stand in quotes.\n",
     .wrong = "phone(ann, 1234567890).\n",
     .mended = "phone(ann, \"1234567890\").\n"},
    {.code = "digit-name",
     .title = "a name begins with a digit",
     .meaning = "A name begins with a letter. Where a digit has to come first, the constant\n"
                "is written in quotes. There is no notation such as 1e5 for numbers.\n",
     .wrong = "rank(ann, 2nd).\n",
     .mended = "rank(ann, \"2nd\").\n"},
    {.code = "input-too-deep",
     .title = "the text is nested too deeply",
     .meaning = "Some three million terms inside each other are more than the parser can\n"
                "hold. Such a text is seldom meant: look for a parenthesis that is opened\n"
                "again and again.\n",
     .kind = ExampleKind::kNone},
    {.code = "unknown-prefix",
     .title = "a prefix was not declared",
     .meaning = "In prefix:name the prefix stands for an address that #namespace declares,\n"
                "further up in the text.\n",
     .wrong = "knows(staff:mia).\n",
     .mended = "#namespace(staff, \"http://example.org/staff#\")\n"
               "knows(staff:mia).\n"},
    {.code = "redefined-prefix",
     .severity = Severity::kWarning,
     .title = "a prefix is declared twice",
     .meaning = "The first declaration of a prefix stays, for all files of the program. This\n"
                "one is ignored.\n",
     .wrong = "#namespace(s, \"http://example.org/a#\")\n"
              "#namespace(s, \"http://example.org/b#\")\n"
              "knows(s:mia).\n",
     .mended = "#namespace(s, \"http://example.org/a#\")\n"
               "knows(s:mia).\n"},
    {.code = "quoted-functor",
     .title = "the name of a function has quotes",
     .meaning = "In a function term, such as box(X), a plain name in small letters stands in\n"
                "front of the parenthesis.\n",
     .wrong = "given(\"box\"(a)).\n",
     .mended = "given(box(a)).\n"},
    {.code = "quoted-frame-space",
     .title = "the name of a frame space has quotes",
     .meaning = "Behind the @ of a frame stands a plain name.\n",
     .wrong = "mary[age -> 30]@\"census\".\n",
     .mended = "mary[age -> 30]@census.\n"},
    {.code = "quoted-template-name",
     .title = "a name in a template has quotes",
     .meaning = "The predicates and attributes of a template are renamed where it is invoked.\n"
                "That needs plain names.\n",
     .wrong = "#template both{p(1), q(1)}(1) {\n"
              "  \"both\"(X) :- p(X), q(X).\n"
              "}\n"
              "r(X) :- both{a(*), b(*)}(X).\n"
              "a(1). b(1).\n",
     .mended = "#template both{p(1), q(1)}(1) {\n"
               "  both(X) :- p(X), q(X).\n"
               "}\n"
               "r(X) :- both{a(*), b(*)}(X).\n"
               "a(1). b(1).\n"},
    {.code = "negation-in-head",
     .title = "not in a frame of a head",
     .meaning = "Default negation asks what does not hold, so it stands in bodies only. What\n"
                "is known to be false is written with - in a head.\n",
     .wrong = "mary[not married] :- single(mary).\n"
              "single(mary).\n",
     .mended = "mary[-married] :- single(mary).\n"
               "single(mary).\n"},
    {.code = "negated-value",
     .title = "the frame of a value is negated",
     .meaning = "A frame that is a value states something of the value besides. Its negation\n"
                "would be no value: state it in a literal of its own.\n",
     .wrong = "mary[friend -> -john[tall]].\n",
     .mended = "mary[friend -> john].\n"
               "-john[tall].\n"},
    {.code = "nested-negation",
     .title = "a frame is negated twice",
     .meaning = "The sign - in front of a frame negates each of its attributes, so none of\n"
                "them has another.\n",
     .wrong = "-mary[-married -> john].\n",
     .mended = "-mary[married -> john].\n"},
    {.code = "weight-range",
     .title = "a weight is too large",
     .meaning = "The weights of weak constraints go up to 4294967.\n",
     .wrong = ":~ late. [5000000:1]\n"
              "late.\n",
     .mended = ":~ late. [500000:1]\n"
               "late.\n"},
    {.code = "weight-precision",
     .severity = Severity::kWarning,
     .title = "a weight has more than three digits behind its full stop",
     .meaning = "Three digits of the fraction of a weight are read. The solver is given the\n"
                "whole part only: multiply all weights until they are whole.\n",
     .wrong = ":~ late. [2.0001:1]\n"
              "late.\n",
     .mended = ":~ late. [2:1]\n"
               "late.\n"},
    {.code = "weight-form",
     .title = "a cost is written otherwise",
     .meaning = "Behind the full stop of a weak constraint may stand its weight and its\n"
                "level, with a colon between them. Both are numbers or variables of the body;\n"
                "[2:] and [:1] leave one out. The terms that other languages write behind\n"
                "them have no place: each instance of the body counts once.\n",
     .wrong = ":~ late. [2@1]\n"
              "late.\n",
     .mended = ":~ late. [2:1]\n"
               "late.\n"},
    {.code = "maxint-exceeded",
     .title = "a number is larger than #maxint",
     .meaning = "#maxint declares the largest integer of the program. No number in it may be\n"
                "larger.\n",
     .wrong = "#maxint = 5.\n"
              "slot(7).\n",
     .mended = "#maxint = 7.\n"
               "slot(7).\n"},
    {.code = "maxint-unknown",
     .title = "#maxint has no value",
     .meaning = "#maxint stands as a term only behind the declaration of its value.\n",
     .wrong = "small(X) :- slot(X), X <= #maxint.\n"
              "slot(3).\n",
     .mended = "#maxint = 5.\n"
               "small(X) :- slot(X), X <= #maxint.\n"
               "slot(3).\n"},
    {.code = "maxint-redefined",
     .severity = Severity::kWarning,
     .title = "#maxint is given twice",
     .meaning = "#maxint is declared once. The first declaration stays, and this one is\n"
                "ignored.\n",
     .wrong = "#maxint = 5.\n"
              "#maxint = 7.\n"
              "slot(3).\n",
     .mended = "#maxint = 5.\n"
               "slot(3).\n"},
    {.code = "maxint-no-integer",
     .title = "#maxint is no number",
     .meaning = "The value of #maxint is a number: it is known before anything is computed.\n",
     .wrong = "#maxint = many.\n"
              "slot(3).\n",
     .mended = "#maxint = 5.\n"
               "slot(3).\n"},
    {.code = "maxint-too-small",
     .title = "#maxint is less than a number of the program",
     .meaning = "#maxint declares the largest integer of the program, and there is a larger\n"
                "one further up.\n",
     .wrong = "slot(7).\n"
              "#maxint = 5.\n",
     .mended = "#maxint = 7.\n"
               "slot(7).\n"},
    {.code = "directive-form",
     .title = "a directive is written otherwise",
     .meaning = "#maxint = 20. has a full stop, #include \"file\" and #namespace(prefix,\n"
                "\"address\") have none, and #template name{open(1)}(1) { ... } is followed by\n"
                "rules in braces.\n",
     .wrong = "#maxint 20.\n"
              "slot(3).\n",
     .mended = "#maxint = 20.\n"
               "slot(3).\n"},
    {.code = "unknown-directive",
     .title = "a word behind # is not known",
     .meaning = "Behind # stand the words of this language: #maxint, #int, #succ, #template,\n"
                "#include, #namespace, and the aggregates #count, #sum, #min, #max, #avg,\n"
                "#times and #any.\n",
     .wrong = "full :- 2 <= #cuont{X : in(X)}.\n"
              "in(a). in(b).\n",
     .mended = "full :- 2 <= #count{X : in(X)}.\n"
               "in(a). in(b).\n"},
};

}    // namespace

std::span<const Page> syntax_pages() {
  return kPages;
}

}    // namespace workbench
