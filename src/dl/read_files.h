#pragma once
// read_files.h - reads a program from files, with those that they include.

#include <string>
#include <vector>

#include "dl/translate.h"

namespace dl {

// Reads the files in order, each with what it includes behind it: the order of statements means
// nothing. A file is read once, however often and under whatever name it is included. The program
// has a mistake when a file cannot be read.
Program survey_files(const std::vector<std::string>& paths);

}    // namespace dl
