#pragma once
// translate.h - a program as text for clingo: what a host includes. No process and no file is
// needed, and translations on several threads know nothing of each other.
//
// Note [two readings]
// How a statement is translated depends on statements that may stand anywhere behind it: which
// predicates are folded, the bound on integers; and clingo's command line tells of queries and weak
// constraints. So a program is read twice: a survey finds out, of all texts together, and only then
// the first statement is translated. That takes a tenth of clingo's time to read the translation,
// and is won back, as clingo can be started at once and reads along.

#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "base/diagnostic.h"
#include "base/line_map.h"
#include "base/text_stretch.h"
#include "dl/options.h"
#include "dl/program_parts.h"
#include "dl/sources.h"
#include "dl/survey.h"

namespace dl {

// A text of the program, and its name in messages.
struct Source {
  std::string_view name;
  std::string_view text;
};

// Gives the text that an include line names, nothing where there is none. It is asked once for each
// name.
using IncludedText = std::function<std::optional<std::string>(std::string_view name)>;

// Takes the translation in pieces of whole lines, while it is made.
using TextReceiver = std::function<void(std::string_view)>;

// What became of a program.
struct Translated {
  Sources sources;         // names and places
  std::string text;        // for clingo; what a receiver has taken is not here
  zarel::LineMap lines;    // of all of it; what dl adds behind a program comes from its line 0
  ProgramParts parts;      // for the reader of answers
  std::optional<zarel::Diagnostic> mistake;    // the first one: then the text is no program
  std::vector<zarel::Diagnostic> further;      // what else was found, some hundred at most
};

// Translates the texts, as one program. Of the options it looks at the filters, the bound,
// `leave_out_facts`, `leaves_out_query`, `tell_all` and `fold`. An include line whose name has no text is a mistake.
Translated translate(std::span<const Source> sources, const Options& options,
                     const IncludedText& included = {});

// The same in two steps. A program that was read once:
struct Program {
  Sources sources;
  Survey survey;
  std::optional<zarel::Diagnostic> mistake;    // why a text could not be had
  bool has_syntax_error = false;    // the survey ended there, and so will the translation

  bool has_failed() const { return mistake || has_syntax_error; }
};

Program survey_texts(std::span<const Source> sources, const IncludedText& included = {});

// What an include line asks for.
struct Include {
  std::string including;    // the name of its text
  std::string name;
  zarel::Place place;
};

// Reads one more text of the program. Returns its include lines; none after a mistake, with which
// the program has failed: a syntax error, a NUL byte, a text that is too long. Who made
// the text can save reading what it knows to be plain facts: on each line one, of an atom whose
// arguments, two at least, are names, strings and integers of 31 bits. The stretches are in order.
std::vector<Include> survey_text(Program& program, std::string name, std::string text,
                                 std::span<const zarel::TextStretch> plain_facts = {});

// Why a text cannot be had; the place of the include line, not known where there is none.
zarel::Diagnostic unreadable(std::string_view name, std::string_view reason,
                             const zarel::Place& place);
zarel::Diagnostic too_long(std::string_view name, const zarel::Place& place);

Traits traits_of(const Program& program, const Options& options);
Translated translate(Program program, const Options& options, TextReceiver receiver = {});

}    // namespace dl
