#pragma once
// read_files.h - reads a program from files, with those that they include.

#include <span>
#include <string>
#include <vector>

#include "dl/translate.h"

namespace dl {

// Reads the files in order, each with what it includes behind it: the order of statements means
// nothing. A file is read once, however often and under whatever name it is included. The program
// has a mistake when a file cannot be read.
Program survey_files(const std::vector<std::string>& paths);

// The same for a text of that name, whose include lines name files. For the plain facts see
// survey_text().
Program survey_with_files(std::string name, std::string text,
                          std::span<const zarel::TextStretch> plain_facts = {});

}    // namespace dl
