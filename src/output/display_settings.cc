#include "output/display_settings.h"

#include "model/run.h"

namespace zarel {

void DisplaySettings::set_filters(const std::vector<std::string>& names,
                                  const std::vector<std::string>& positive_names) {
  for (const std::string& name : names) filters.add(name);
  for (const std::string& name : positive_names) positive_filters.add(name);
  if (!filters.is_empty() || !positive_filters.is_empty()) noFilters = false;
}

DisplaySettings& display_settings() {
  return current_run().parts.get<DisplaySettings>();
}

}    // namespace zarel
