#include <array>

#include "workbench/pages/pages.h"

namespace workbench {

namespace {

constexpr auto kPages = std::to_array<Page>({
    {.code = "no-atom",
     .title = "what is asked about is no single atom",
     .meaning =
         R"(zrl why and zrl whynot explain an atom, a frame, a membership or a subclass,
written as in a program: with its space, its prefixes and its strong negation.
With variables zrl why explains the first ten atoms, and zrl whynot why there is
none, if each variable is an argument of its own; --with takes no variables. A
row of the query is asked for as ?(a, b), all of them as ?. The exit status is
2.
)",
     .kind = ExampleKind::kCommand,
     .wrong = R"(echo 'p(a). p(b). q(X) :- p(X).' | zrl why 'p(a), q(a)'
)",
     .mended = R"(echo 'p(a). p(b). q(X) :- p(X).' | zrl why 'q(a)'
)"},
});

}    // namespace

std::span<const Page> command_pages() {
  return kPages;
}

}    // namespace workbench
