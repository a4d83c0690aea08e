#pragma once
// catalogue.h - every code of a message with its severity and its page: what it means, an example
// that is wrong, and the same mended.

#include <span>
#include <string_view>

#include "workbench/messages/message.h"

namespace workbench {

// How an example of a page is run, and what cannot be run at all.
enum class ExampleKind : std::uint8_t {
  kCheck,      // "zrl check example.zrl" gives the code
  kRun,        // "zrl run example.zrl" does
  kCommand,    // `wrong` and `mended` are whole command lines, for shells
  kNone,       // nothing that a text can show: a disk that is full, a solver that died
};

// A page of the catalogue.
struct Page {
  std::string_view code;
  Severity severity = Severity::kError;
  bool is_on = true;           // without an option
  std::string_view title;      // one line: what is wrong
  std::string_view meaning;    // some sentences, wrapped at 80 columns, ending in a line end
  ExampleKind kind = ExampleKind::kCheck;
  std::string_view wrong = {};     // whole lines
  std::string_view mended = {};    // the same with little changed, which gives no message
};

// All pages, in the order of the documentation.
std::span<const Page> pages();

// The page of a code; null when there is none.
const Page* page_of(std::string_view code);

}    // namespace workbench
