#pragma once
// pages.h - the catalogue's pages, by what finds them.

#include <span>

#include "workbench/messages/catalogue.h"

namespace workbench {

std::span<const Page> syntax_pages();      // the scanner and the grammar
std::span<const Page> foreign_pages();     // what other languages have
std::span<const Page> program_pages();     // the program as a whole
std::span<const Page> template_pages();    // templates
std::span<const Page> warning_pages();     // what is legal and seldom meant
std::span<const Page> solver_pages();      // the translation and the search
std::span<const Page> data_pages();        // files of data
std::span<const Page> picture_pages();     // pictures and their program
std::span<const Page> command_pages();     // the command line and the files

}    // namespace workbench
