#include <array>

#include "workbench/pages/pages.h"

namespace workbench {
namespace {

constexpr auto kPages = std::to_array<Page>({
    {.code = "graphviz-missing",
     .title = "a picture needs Graphviz, which is not there",
     .meaning =
         R"(Pictures in SVG are drawn by Graphviz (in Debian the package graphviz), whose
program dot has to be on the PATH. The form dot needs no other program: it is
the text that Graphviz reads, here or elsewhere. The exit status is 3.
)",
     .kind = ExampleKind::kCommand,
     .wrong = R"(zrl=$(command -v zrl)
echo 'road(ayr, bute).' | PATH=/nowhere "$zrl" run --format svg
)",
     .mended = R"(echo 'road(ayr, bute).' | zrl run --format dot
)"},
    {.code = "graphviz-failure",
     .title = "Graphviz did not draw the picture",
     .meaning =
         R"(Graphviz was started and ended without a picture, or was not done with it in
time. Less is drawn faster: --graph and --filter choose. The exit status is 3.
)",
     .kind = ExampleKind::kNone},
});

}    // namespace

std::span<const Page> picture_pages() {
  return kPages;
}

}    // namespace workbench
