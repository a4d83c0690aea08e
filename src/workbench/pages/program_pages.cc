#include <array>

#include "workbench/pages/pages.h"

namespace workbench {
namespace {

constexpr auto kPages = std::to_array<Page>({
    {.code = "unreadable-file",
     .title = "a file of the program cannot be read",
     .meaning =
         R"(A file that was named is not there, is a folder, or may not be read by you.
Files are looked for as named, then in the folders of -I, then in the library of
templates that is installed with zrl. Nothing is solved: the exit status is 2.
)",
     .kind = ExampleKind::kCommand,
     .wrong = R"(zrl check twons.zrl
)",
     .mended = R"(echo 'town(york).' > towns.zrl; zrl check towns.zrl
)"},
    {.code = "read-failure",
     .title = "a file cannot be read to its end",
     .meaning =
         R"(The file was opened, and reading it failed in the middle: a disk or a network
that fails, say. The program is not solved, since part of it may be missing.
)",
     .kind = ExampleKind::kNone},
    {.code = "replaced-query",
     .severity = Severity::kWarning,
     .title = "a second query takes the place of the first",
     .meaning =
         R"(A program has one query. When another one is read, in the same file or in a
later one, it takes the place of the first, which is not answered.
)",
     .wrong = R"(parent(ann, bob).
parent(X, bob)?
parent(ann, Y)?
)",
     .mended = R"(parent(ann, bob).
parent(ann, Y)?
)"},
    {.code = "unreadable-answers",
     .title = "the solver's output cannot be read",
     .meaning =
         R"(A solver that was chosen with --solver wrote its answers, and they cannot be
read: their file was taken away, or may not be read.
)",
     .kind = ExampleKind::kNone},
    {.code = "answer-syntax",
     .title = "the solver's output is not in the form of answer sets",
     .meaning =
         R"(A solver that was chosen with --solver wrote something else than answer sets of
this system's language. What it wrote up to there is printed. Look at its
messages, and whether the program is a solver of that language at all.
)",
     .kind = ExampleKind::kNone},
    {.code = "answers-too-deep",
     .title = "a term of the answers is nested too deeply",
     .meaning =
         R"(An answer holds a term with so many terms inside each other that it cannot be
read. Terms that grow with every step of a rule are the usual reason: let
another literal of the body bound them.
)",
     .kind = ExampleKind::kNone},
    {.code = "answer-scanner",
     .title = "the solver's output cannot be read to its end",
     .meaning =
         R"(Reading the solver's output failed in the middle. What was read up to there is
printed.
)",
     .kind = ExampleKind::kNone},
});

}    // namespace

std::span<const Page> program_pages() {
  return kPages;
}

}    // namespace workbench
