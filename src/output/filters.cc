#include "output/filters.h"

namespace zarel {

bool passPositiveFilters(const DisplaySettings& settings, std::string_view name,
                         bool negativeAtom) {
  return !negativeAtom && settings.positive_filters.contains(name);
}

bool passFilters(const DisplaySettings& settings, std::string_view name, bool negativeAtom) {
  if (settings.noFilters) return true;
  if (settings.filters.contains(name)) return true;
  return passPositiveFilters(settings, name, negativeAtom);
}

}    // namespace zarel
