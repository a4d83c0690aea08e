#pragma once
// loading.h - finds the files of a program and reads them.

#include <span>
#include <string>
#include <vector>

#include "workbench/data/data_reader.h"
#include "zarel/program.h"

namespace workbench {

// Where a file is that is not there as named: in one of the folders, then in the library of
// templates that is installed with the program. The name itself when it is nowhere.
std::string found_file(const std::string& name, std::span<const std::string> folders);

// The templates of that library, each of which has a file of its name.
std::vector<std::string> library_templates();

// Texts that do not come from files, which the program looks into as long as it lives.
struct LoadedTexts {
  std::string standard_input;
};

// Reads the files ("-", once: standard input) into the program, which finds those that cannot be
// read. Files of data, and those that a file of the program declares, go through `data`.
void load(zarel::Program& program, std::span<const std::string> files,
          std::span<const std::string> folders, LoadedTexts& texts, DataReader& data);

}    // namespace workbench
