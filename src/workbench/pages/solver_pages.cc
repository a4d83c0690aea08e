#include <array>

#include "workbench/pages/pages.h"

namespace workbench {
namespace {

constexpr auto kPages = std::to_array<Page>({
    {.code = "missing-bound",
     .title = "integers are counted through, and nothing says how far",
     .meaning =
         R"(A range such as 1..3, #int, #succ, and a variable that only a sum or a product
gives a value, go through all integers from 0 on. The program has to say where
these end, with #maxint, or the command line with --maxint.
)",
     .wrong = R"(day(1..7).
)",
     .mended = R"(#maxint=7.
day(1..7).
)"},
    {.code = "second-bound",
     .title = "the bound on integers is given twice, and differently",
     .meaning =
         R"(A program has one #maxint. Here a text that goes to the solver as it is, or an
included file, gives another one. The option --maxint goes before both.
)",
     .wrong = R"(ASITIS %*
#maxint=4.
#maxint=5.
*%
day(1).
)",
     .mended = R"(ASITIS %*
#maxint=5.
*%
day(1).
)"},
    {.code = "second-query",
     .title = "a program has two queries",
     .meaning =
         R"(A program asks one thing. Here a text that goes to the solver as it is, or an
included file, has a query besides the one of the program.
)",
     .wrong = R"(ASITIS %*
day(1)?
day(2)?
*%
)",
     .mended = R"(ASITIS %*
day(2)?
*%
)"},
    {.code = "integer-range",
     .title = "a number is greater than 2147483647",
     .meaning =
         R"(Integers go from 0 to 2147483647, the greatest that 32 bits hold. Identifiers
that are longer can be written as strings.
)",
     .wrong = R"(ASITIS %*
phone(4930123456).
*%
)",
     .mended = R"(ASITIS %*
phone("4930123456").
*%
)"},
    {.code = "builtin-arity",
     .title = "a builtin has too many or too few arguments",
     .meaning =
         R"(#int takes one argument, #succ two, + and * written in front take three: the
result is the last one.
)",
     .wrong = R"(ASITIS %*
#maxint=9.
next(X) :- #succ(1,X,2).
*%
)",
     .mended = R"(ASITIS %*
#maxint=9.
next(X) :- #succ(1,X).
*%
)"},
    {.code = "functor-name",
     .title = "#function_builtin lacks the name of a function",
     .meaning =
         R"(#function_builtin(F,f,A,B) says that F is the term f(A,B). Its first argument is
the whole term, its second one the name, which has to be written out.
)",
     .wrong = R"(ASITIS %*
name(f).
built(F) :- name(N), #function_builtin(F,N,1).
*%
)",
     .mended = R"(ASITIS %*
name(f).
built(F) :- name(N), #function_builtin(F,f,N).
*%
)"},
    {.code = "unsupported-negation",
     .title = "not stands in front of what cannot be negated",
     .meaning =
         R"(Sums, products, #succ, #function_builtin and #avg cannot be negated. Give the
positive one a rule of its own, and negate the atom of its head; of an average
the opposite comparison does.
)",
     .wrong = R"(age(30). age(40).
young :- not #avg{A : age(A)} > 50.
)",
     .mended = R"(age(30). age(40).
young :- #avg{A : age(A)} <= 50.
)"},
    {.code = "unsupported-aggregate",
     .title = "the solver has no such aggregate",
     .meaning =
         R"(The solver knows #count, #sum, #min, #max and #avg. #times and #any can be read,
and have to be written otherwise: instead of #any a rule for each case.
)",
     .wrong = R"(age(30).
somebody :- #any{A : age(A)} > 20.
)",
     .mended = R"(age(30).
somebody :- #max{A : age(A)} > 20.
)"},
    {.code = "nested-aggregate",
     .title = "an aggregate stands inside another one",
     .meaning =
         R"(The elements of an aggregate are made of literals that are no aggregates. Give
the inner one a rule of its own, whose head then stands in the outer one.
)",
     .wrong = R"(ASITIS %*
in(1,2).
busy :- #count{X : in(X,Y), #count{Z : in(X,Z)} > 0} > 0.
*%
)",
     .mended = R"(ASITIS %*
in(1,2).
full(X) :- in(X,Y), #count{Z : in(X,Z)} > 0.
busy :- #count{X : full(X)} > 0.
*%
)"},
    {.code = "missing-guard",
     .title = "an aggregate is compared with nothing",
     .meaning =
         R"(An aggregate has a value, which a term on one side of it, or on both, is
compared with. Here there is the sign of a comparison, and no term.
)",
     .wrong = R"(ASITIS %*
in(1).
many :- #count{X : in(X)} > .
*%
)",
     .mended = R"(ASITIS %*
in(1).
many :- #count{X : in(X)} > 5.
*%
)"},
    {.code = "guard-operator",
     .title = "an aggregate cannot be compared in this way",
     .meaning =
         R"(An aggregate with one term beside it is compared by =, <, <=, > or >=; between
two terms both signs are < or <=. Instead of != use "not" and =.
)",
     .wrong = R"(ASITIS %*
in(1).
few :- #count{X : in(X)} != 5.
*%
)",
     .mended = R"(ASITIS %*
in(1).
few :- not #count{X : in(X)} = 5.
*%
)"},
    {.code = "tangled-products",
     .title = "too many products with an unknown factor depend on each other",
     .meaning =
         R"(A product one factor of which nothing else gives a value says nothing of it
where the other factor is 0. A rule with many such products, each of which
needs another one, has too many cases. A bound on the integers, by #maxint or
--maxint, or a literal that gives the factors values, leaves one case.
)",
     .kind = ExampleKind::kNone},
    {.code = "unexpected-character",
     .title = "a character means nothing in the solver's language",
     .meaning =
         R"(Text between ASITIS %* and *%, and what #include names, goes to the solver as it
is. Its names have letters without accents, digits and underscores; anything
else stands in strings.
)",
     .wrong = R"(ASITIS %*
guest(rené).
*%
)",
     .mended = R"(ASITIS %*
guest("rené").
*%
)"},
    {.code = "unknown-word",
     .title = "the solver does not know a word with #",
     .meaning =
         R"(Text that goes to the solver as it is has a word that begins with # and is none
of the solver's: #maxint, #int, #succ, #include, #function_builtin, and the
aggregates #count, #sum, #min, #max and #avg.
)",
     .wrong = R"(ASITIS %*
#show guest/1.
*%
)",
     .mended = R"(ASITIS %*
guest(ann).
*%
)"},
    {.code = "nul-byte",
     .title = "a file has a NUL byte",
     .meaning =
         R"(A file that #include names is no text: it has a byte with the value 0. It may be
a binary file, or text of another encoding, such as UTF-16.
)",
     .kind = ExampleKind::kNone},
    {.code = "text-too-long",
     .title = "a text has more than two gigabytes",
     .meaning =
         R"(The rewritten program, or a file that #include names, has more bytes than the
translation can count. Cut the program into files, and include them.
)",
     .kind = ExampleKind::kNone},
    {.code = "integer-overflow",
     .title = "an integer of an answer set leaves 32 bits",
     .meaning =
         R"(Without a bound on the integers a sum or product may give any number. In an
answer set it gave one that is greater than 2147483647, so the answers cannot
be relied on, and the run ends. A bound, by #maxint or --maxint, leaves out what
is beyond it.
)",
     .kind = ExampleKind::kRun,
     .wrong = R"(width(65536).
area(A) :- width(W), A = W * W.
)",
     .mended = R"(#maxint=100000.
width(300).
area(A) :- width(W), A = W * W.
)"},
    {.code = "sum-overflow",
     .title = "an aggregate adds up to more than 32 bits",
     .meaning =
         R"(The values of a #sum, all that could hold together, add up to 2147483647 or
more, or the differences that an #avg needs do. The solver counts in 32 bits.
)",
     .kind = ExampleKind::kRun,
     .wrong = R"(price(999999997). price(999999998). price(999999999).
total(T) :- T = #sum{P : price(P)}.
)",
     .mended = R"(price(999997). price(999998). price(999999).
total(T) :- T = #sum{P : price(P)}.
)"},
    {.code = "measure-no-integer",
     .title = "a weight or level is no integer",
     .meaning =
         R"(A weak constraint that an answer set violates has a weight and a level, which
are integers. Here the variable that gives one of them has another value.
)",
     .kind = ExampleKind::kRun,
     .wrong = R"(price(much).
:~ price(P). [P:1]
)",
     .mended = R"(price(20).
:~ price(P). [P:1]
)"},
    {.code = "cost-overflow",
     .title = "the costs of an answer set leave 64 bits",
     .meaning =
         R"(The weights of all weak constraints that an answer set violates are added up. On
one level they came to more than 64 bits hold.
)",
     .kind = ExampleKind::kNone},
    {.code = "cost-mismatch",
     .title = "clingo's costs are not those of the program",
     .meaning =
         R"(clingo reports a cost for each level of the weak constraints, and there are not
as many as levels. Such a clingo is broken, or no clingo.
)",
     .kind = ExampleKind::kNone},
    {.code = "output-failure",
     .title = "something could not be written",
     .meaning =
         R"(The answers, or the files of --keep, could not be written: the disk is full, or
the place is not yours. The exit status is 4. It is the same when nobody reads
the answers any more, as in "zrl program.zrl | head -1", which is not an error
that is worth a message.
)",
     .kind = ExampleKind::kCommand,
     .wrong = R"(echo 'p(1).' | zrl run > /dev/full
)",
     .mended = R"(echo 'p(1).' | zrl run > answers.txt
)"},
    {.code = "form-misfit",
     .title = "the answers do not fit into the form that was asked for",
     .meaning =
         R"(A file of CSV is one table, and holds one relation. A folder takes a file for
each relation; it is told by its slash, as in --output answers/. With --filter
one relation is chosen. The exit status is 2.
)",
     .kind = ExampleKind::kCommand,
     .wrong = R"(echo 'p(1). q(1,2).' | zrl --format csv
)",
     .mended = R"(echo 'p(1). q(1,2).' | zrl --format csv --filter q
)"},
    {.code = "process-failure",
     .title = "the system lets zrl start no solver",
     .meaning =
         R"(The solver is a process of its own, and the system refused it: there are too
many processes or open files, or too little memory.
)",
     .kind = ExampleKind::kNone},
    {.code = "solver-missing",
     .title = "the solver cannot be run",
     .meaning =
         R"(zrl translates programs for clingo, which has to be installed (in Debian by the
package gringo) and on the PATH, or be named with --clingo; or there is no
program of the name that --solver gives. The exit status is 3.
)",
     .kind = ExampleKind::kCommand,
     .wrong = R"(echo 'p(1).' | zrl run --clingo=clinfo
)",
     .mended = R"(echo 'p(1).' | zrl run --clingo=clingo
)"},
    {.code = "solver-killed",
     .title = "the solver died of a signal",
     .meaning =
         R"(Something ended the solver before it was done. The system kills processes when
memory runs out, and terms that are nested ten thousands deep take more stack
than it has. What was found before is printed, and is right; more may be
missing.
)",
     .kind = ExampleKind::kNone},
    {.code = "solver-memory",
     .title = "the solver ran out of memory",
     .meaning =
         R"(The instances of the program's rules do not fit into memory. A rule has an
instance for each combination of the values of its variables: rules with fewer
variables, or literals that leave fewer values, help.
)",
     .kind = ExampleKind::kNone},
    {.code = "solver-weights",
     .title = "the weights of weak constraints are too large for clingo",
     .meaning =
         R"(clingo counts in 32 bits in some places, and noticed that the weights of the
weak constraints leave them. Smaller weights of the same order give the same
best answer sets.
)",
     .kind = ExampleKind::kNone},
    {.code = "solver-error",
     .title = "clingo refuses the translated program",
     .meaning =
         R"(clingo found an error in what the program was translated to. The translation
finds nearly all errors itself, so this may be an error of zrl, or a clingo that
is older than 5.4.1.
)",
     .kind = ExampleKind::kNone},
    {.code = "solver-interrupted",
     .title = "clingo was interrupted by someone else",
     .meaning =
         R"(clingo says that it was interrupted, though neither an interrupt nor the time
limit came from zrl. What was found before is printed, and is right; more may be
missing.
)",
     .kind = ExampleKind::kNone},
    {.code = "solver-incomplete",
     .title = "the solver ended without a complete answer",
     .meaning =
         R"(The solver ended with a status that means failure, or in the middle of its
answers. What was found before is printed, and is right; more may be missing.
)",
     .kind = ExampleKind::kNone},
    {.code = "job-folder",
     .title = "the folder of a search in parts is not what is needed",
     .meaning =
         R"(A search that zrl split has cut lies in a folder, with the results of its parts.
The folder is missing or damaged, belongs to another search or another clingo,
or lacks results, which zrl missing names; the message says which. Parts can be
run again at any time: the new result replaces the old one. Where the program
has changed, cut it again, to a new folder. The exit status is 2.
)",
     .kind = ExampleKind::kNone},
});

}    // namespace

std::span<const Page> solver_pages() {
  return kPages;
}

}    // namespace workbench
