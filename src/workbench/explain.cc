#include <iostream>
#include <sstream>
#include <string>

#include "workbench/checked_program.h"
#include "workbench/commands.h"
#include "workbench/messages/catalogue.h"
#include "workbench/messages/page_text.h"

namespace workbench {
namespace {

constexpr std::string_view kHead = R"(# Messages of zrl

What is wrong with a program, and what is legal and seldom meant, `zrl` tells on standard error:

    map.zrl:4:8: error: the variable Y of the head has no value [unsafe-variable]
      4 | far(X, Y) :- road(X, Z).
        |        ^ Y occurs in no positive literal of the body
      help: did you mean Z? otherwise add a literal that gives Y a value

In front stand the file, the line and the column, in characters, from 1; behind in brackets the code. The line of the
program follows with the range underlined that is meant, then what can be done. Where a second place matters, a note
tells it in the same way. Lines of more than 100 columns are cut around the range. Characters that a terminal would act
on, and bytes that are no UTF-8, are drawn as U+FFFD. `zrl explain CODE` prints the page of a code, `zrl explain` lists
all codes.

On a terminal messages are coloured, unless the variable `NO_COLOR` is set; `CLICOLOR_FORCE` colours them everywhere, and
`--colour=always`, `--colour=never` decide it. Behind the first 20 messages the others are only counted.

With an error nothing is solved: the exit status is 1, or 2 when a file cannot be read or the command line is wrong.
Warnings change neither answers nor status.

## Which warnings are shown

| Written | What it does |
|---|---|
| `-W CODE` | shows a warning that is off without it |
| `-W no-CODE` | hides a warning |
| `-W error=CODE` | makes a warning an error |
| `--strict` | makes all warnings errors |
| `%! allow CODE, CODE` | a comment, anywhere in a file: hides these warnings in that file |

Errors cannot be hidden.

## Messages for programs

With `--messages=json` each message is an object of JSON on a line of its own, in UTF-8, all of them, in the order in
which they are found:

    {"kind":"message","code":"unsafe-variable","severity":"error","message":"the variable Y ...","label":"...",
     "help":"...","ranges":[RANGE],"notes":[...],"fixes":[...]}

| Key | Value |
|---|---|
| `kind` | `message`; a note of the run as a whole, such as the number of answer sets, is `{"kind":"note","message":"..."}` |
| `code` | as in brackets |
| `severity` | `error`, `warning` or `note` |
| `message`, `label`, `help` | the texts: of the first line, under the range, behind `help:`; empty when there is none |
| `ranges` | a list of the range that is underlined; empty when no text is at fault |
| `notes` | a list of `{"message":"...","ranges":[...]}` |
| `fixes` | a list of changes that mend the text: `{"kind":"...","ranges":[...],"replacement":"..."}`; the kind is `replace`, `insert-before` or `insert-behind` that range |

A range is `{"file":"map.zrl","first":POSITION,"last":POSITION}`, from its first character to its last one; a position
is `{"line":4,"column":8,"byte":8}`, all from 1, the column in characters. Where nothing stands, as at the end of a
file, both are the position behind the last character. A file as a whole has line 0.

## Codes

)";

// What `zrl check` says of the example, which is called example.zrl.
std::string said_of(const Page& page) {
  if (page.kind != ExampleKind::kCheck) return {};
  CommandLine line;
  line.messages.on.emplace(page.code);
  std::ostringstream out;
  CheckedProgram checked(line, out);
  checked.program().read_text(page.wrong, "example.zrl");
  if (!checked.prepare(zarel::PlainFacts::kLeftOut)) {
    check_translation(checked.program(), line.search, checked.reporter());
  }
  return std::move(out).str();
}

void print_whole_catalogue(std::ostream& out) {
  out << kHead << list_markdown();
  for (const Page& page : pages()) out << '\n' << page_markdown(page, said_of(page));
}

void print_pages(const CommandLine& line, std::ostream& out) {
  for (const std::string& code : line.codes) {
    if (&code != &line.codes.front()) out << "\n\n";
    const Page& page = *page_of(code);
    out << page_text(page, said_of(page));
  }
}

}    // namespace

// The command line has looked at the codes.
ExitStatus explain(const CommandLine& line) {
  if (line.writes_whole_catalogue) {
    print_whole_catalogue(std::cout);
  } else if (line.codes.empty()) {
    std::cout << list_text();
  } else {
    print_pages(line, std::cout);
  }
  std::cout.flush();
  return std::cout ? ExitStatus::kFound : ExitStatus::kOutputFailed;
}

}    // namespace workbench
