#pragma once
// search.h - the searches, and what they have in common.

#include <string>
#include <vector>

#include "dl/options.h"
#include "workbench/answers/found.h"
#include "workbench/messages/message.h"
#include "workbench/search/answer_printer.h"
#include "workbench/search/kept_stages.h"
#include "workbench/search/search_failure.h"
#include "workbench/search/solving.h"
#include "zarel/program.h"

namespace workbench {

// How a search ended that did not fail.
struct SearchResult {
  Asked asked;
  Judgement judgement;
  std::string reason = {};                  // why it was cut, where that is not an interruption
  std::string said = {};                    // by the solver, on its standard error
  std::vector<std::string> notes = {};      // of how a search was divided, a line each
  std::vector<std::string> figures = {};    // of the solver's own, a line each
  std::vector<std::string> profile = {};    // which rules have most instances, a line each
};

// What a program is translated with. What the user's atoms became is shown, and nothing else.
dl::Options translation_options(const zarel::Run& run, const SearchOptions& chosen);

// What the translation finds wrong; nothing when it is a program for clingo.
std::vector<Message> translation_mistakes(zarel::Program& program, const SearchOptions& options);

// Which of the user's lines most ground rules come from, in words, the largest first. The program
// was rewritten to the text. Throws dl::Failure.
std::vector<std::string> profile_of(const zarel::Program& program, std::string text,
                                    const dl::Options& options);

// Each solves the program's text, with what its user asked for. Throws SearchFailure.
SearchResult search_with_clingo(zarel::Program& program, const SearchOptions& options,
                                KeptStages& kept, AnswerPrinter& printer);
SearchResult search_with_solver(zarel::Program& program, const SearchOptions& options,
                                KeptStages& kept, AnswerPrinter& printer);

}    // namespace workbench
