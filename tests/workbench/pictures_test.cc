// pictures_test.cc - the page of a report, opened in a browser that clicks through it; the pictures
// of the documentation.

#include <filesystem>
#include <gtest/gtest.h>
#include <string>
#include <string_view>

#include "support/run_program.h"

namespace workbench {
namespace {

// A warning in line 3, strings that would end a script or an attribute, bytes that are no UTF-8.
constexpr std::string_view kProgram = R"(colour(red) v colour(blue).
text("</script><img src=x onerror=alert(1)>", "a & 'b' \").
odd(X) :- colour(X), missing(X).
size(10). size(9). size(200).
ann[age -> 30, knows -> ben] :- colour(red).
ben : person.
text("<!--)"
                                      "\xff"
                                      R"(", "--></table>").
)";

// What the page shows after each click, a line each.
constexpr std::string_view kClicks = R"(<pre id="seen"></pre><script>
const seen = [];
const see = (name, value) => seen.push(`${name}: ${value}`);
const tables = () => [...document.querySelectorAll('#tables table')].map((table) =>
    table.caption.textContent + ' ' +
    [...table.tBodies[0].rows].map((row) => [...row.cells].map((cell) => cell.textContent).join(' ')).join(' | '));
const table = (name) => tables().find((text) => text.startsWith(name)) || 'none';
const look = (when) => {
  see(when, document.getElementById('position').textContent);
  see('  colour', table('colour/1'));
  see('  objects', table('objects'));
  see('  changed', [...document.querySelectorAll('#changed li')].map((li) => li.textContent).sort().join(' / '));
  see('  picture names ann', [...document.querySelectorAll('#picture svg text')].some((text) => text.textContent === 'ann'));
};
see('words', document.getElementById('words').textContent);
see('statistics', [...document.querySelectorAll('#statistics dt')].map((dt) => dt.textContent).join(', '));
look('at first');
document.getElementById('next').click();
look('a click on next');
const slider = document.getElementById('slider');
slider.value = 1;
slider.dispatchEvent(new Event('input'));
look('the slider back');
see('text', table('text/2'));
const head = () => [...document.querySelectorAll('#tables table')].find((t) => t.caption.textContent.startsWith('size')).querySelector('button');
see('sizes', table('size/1'));
head().click();
see('sorted', table('size/1'));
head().click();
see('sorted again', table('size/1'));
const link = [...document.querySelectorAll('#messages a')].find((a) => a.textContent.includes('missing'));
link.click();
see('a click on the warning', document.activeElement.textContent.split('\n')[0]);
see('above it', document.activeElement.previousElementSibling.textContent);
see('from strings', document.querySelectorAll('img').length);
see('from elsewhere', performance.getEntriesByType('resource').length);
document.getElementById('seen').textContent = seen.join('\n');
</script>)";

constexpr std::string_view kSeen = R"(<pre id="seen">words: 2 answer sets
statistics: answer sets, seconds, complete, exit status
at first: Answer set 1 (1 of 2 shown)
  colour: colour/1 (1) red
  objects: objects (2) ann knows -&gt; ben | ann age -&gt; 30
  changed: 
  picture names ann: true
a click on next: Answer set 2 (2 of 2 shown)
  colour: colour/1 (1) blue
  objects: none
  changed: + colour/1: blue / − colour/1: red / − objects: ann, age -&gt;, 30 / − objects: ann, knows -&gt;, ben
  picture names ann: false
the slider back: Answer set 1 (1 of 2 shown)
  colour: colour/1 (1) red
  objects: objects (2) ann knows -&gt; ben | ann age -&gt; 30
  changed: 
  picture names ann: true
text: text/2 (2) "&lt;/script&gt;&lt;img src=x onerror=alert(1)&gt;" "a &amp; 'b' \" | "&lt;!--\xff" "--&gt;&lt;/table&gt;"
sizes: size/1 (3) 10 | 9 | 200
sorted: size/1 (3) 9 | 10 | 200
sorted again: size/1 (3) 200 | 10 | 9
a click on the warning: warning: missing is used, but no fact and no rule gives it [never-given]
above it: 3odd(X) :- colour(X), missing(X).
from strings: 0
from elsewhere: 0</pre><script>
)";

constexpr std::string_view kBrowser =
    "browser=$(command -v chromium-headless-shell || command -v chromium) && "
    "timeout 60 \"$browser\" --headless --no-sandbox --disable-gpu --dump-dom "
    "\"file://$PWD/clicked.html\" 2> browser.log | sed -n '/<pre id=.seen.>/,/<.pre>/p'";

TEST(Report, IsAPageThatCanBeClickedThrough) {
  const zarel::WorkFolder folder;
  folder.write("program.zrl", kProgram);
  const zarel::Outcome made =
      folder.run("zrl program.zrl -q --report page.html 2> /dev/null | wc -l");
  ASSERT_EQ(made.output, "2\n");
  folder.write("clicked.html", folder.read("page.html") + std::string(kClicks));
  const zarel::Outcome outcome = folder.run(kBrowser);
  EXPECT_EQ(outcome.output, kSeen) << folder.read("browser.log");
}

// How Graphviz lays them out hangs on the fonts of the machine.
TEST(Pictures, OfTheDocumentationAreWhatTheCommandsGive) {
  const std::filesystem::path documented = PROJECT_FOLDER "/docs/pictures";
  const zarel::WorkFolder folder;
  const zarel::Outcome made =
      folder.run("'" PROJECT_FOLDER "/scripts/pictures' '" ZAREL_FOLDER "' \"$PWD\"");
  ASSERT_EQ(made, (zarel::Outcome{"", "", 0}));
  int pictures = 0;
  for (const auto& entry : std::filesystem::directory_iterator(documented)) {
    const std::string name = entry.path().filename().string();
    if (entry.path().extension() != ".dot") continue;
    EXPECT_EQ(folder.read(name), zarel::text_of(entry.path())) << name;
    EXPECT_NE(zarel::text_of(documented / (name.substr(0, name.size() - 4) + ".svg")), "") << name;
    ++pictures;
  }
  EXPECT_EQ(pictures, 3);
}

}    // namespace
}    // namespace workbench
