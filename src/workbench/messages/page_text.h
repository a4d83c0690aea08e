#pragma once
// page_text.h - the pages of the catalogue, for a terminal and for the documentation.

#include <string>
#include <string_view>

#include "workbench/messages/catalogue.h"

namespace workbench {

// A page whole. `said` is what zrl says of its wrong example; empty where that is not shown.
std::string page_text(const Page& page, std::string_view said);
std::string page_markdown(const Page& page, std::string_view said);

std::string list_text();        // all codes with their titles
std::string list_markdown();    // the same, as a table that leads to the pages

}    // namespace workbench
