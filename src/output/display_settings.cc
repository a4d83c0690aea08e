#include "output/display_settings.h"

namespace zarel {

void DisplaySettings::set_filters(const std::vector<std::string>& names,
                                  const std::vector<std::string>& positive_names) {
  for (const std::string& name : names) filters.add(name);
  for (const std::string& name : positive_names) positive_filters.add(name);
  if (!filters.is_empty() || !positive_filters.is_empty()) noFilters = false;
}

DisplaySettings& display_settings() {
  static DisplaySettings settings;
  return settings;
}

void reset_display_settings() {
  display_settings() = DisplaySettings{};
}

}    // namespace zarel
