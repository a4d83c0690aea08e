#pragma once
// filters.h - which atoms of an answer set are shown.

#include <string_view>

#include "output/display_settings.h"

namespace zarel {

// Whether an atom of the predicate `name` is shown; negativeAtom: it stands behind a "-". Names are
// compared exactly.
bool passFilters(const DisplaySettings& settings, std::string_view name, bool negativeAtom);

// The same for the positive filters alone, which let nothing through behind a "-".
bool passPositiveFilters(const DisplaySettings& settings, std::string_view name, bool negativeAtom);

}    // namespace zarel
