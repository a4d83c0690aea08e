#pragma once
// framespace_display.h - how frame spaces and the URIs of name spaces are shown.

#include <string>
#include <string_view>

#include "model/namespaces.h"
#include "output/display_settings.h"

namespace zarel {

// What is put behind an atom of the frame space `ns`: "@" and its name, or nothing for "default"
// while settings.space is set.
std::string getFramespace(const DisplaySettings& settings, std::string_view ns);

// The terms of a comma-separated list with full URIs of declared prefixes shortened to prefix:name.
// The list is split at every comma, those inside quotes too, and each piece is looked at by itself.
std::string returnAddress(const NamespaceTable& namespaces, std::string_view args);

}    // namespace zarel
