#pragma once
// parse.h - reads a program, with the files it includes. The generated scanner and parser are
// behind this.
//
// Note [two readings]
// How a statement is translated depends on statements that may stand anywhere behind it: which
// predicates are folded, the bound on integers; and clingo's command line tells of queries and weak
// constraints. So a program is read twice: a survey finds out, of all files together, and only then
// the first statement is translated. That takes a tenth of clingo's time to read the translation,
// and is won back, as clingo can be started at once and reads along.

#include <string>
#include <vector>

#include "dl/folding.h"
#include "dl/statement_builder.h"
#include "dl/survey.h"
#include "dl/translator.h"

namespace dl {

struct InputFile {
  std::string path;
  std::string text;    // ends in two NUL bytes, which the scanner uses
};

struct InputFiles {
  std::vector<InputFile> files;
  bool has_mistake = false;    // then the survey ended there, and so will the translation
};

// Hands every statement of the text to the builder's receiver. `text` ends in two NUL bytes and is
// afterwards what it was. Returns false after a mistake, which is the last one of `builder`.
bool parse_text(std::string& text, StatementBuilder& builder);

// Reads the files in order, each with what it includes behind it: the order of statements means
// nothing. A file is read once, however often and under whatever name it is included. Throws
// Failure when a file cannot be read.
InputFiles survey_program(const std::vector<std::string>& paths, Survey& survey);

// Translates the files in this order, and drops the text of each. Throws Failure at the first
// mistake.
void translate_program(InputFiles& input, const Folding& folding, Translator& translator);

}    // namespace dl
