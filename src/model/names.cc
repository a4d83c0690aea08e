#include "model/names.h"

#include <algorithm>
#include <charconv>

#include "model/atom.h"
#include "model/report.h"

namespace zarel {
std::string getNameWithoutLabel(std::string_view name) {
  const std::size_t underscore = name.rfind('_');
  if (underscore == std::string_view::npos) return {};
  return std::string(name.substr(0, underscore));
}

int getLabel(std::string_view name) {
  const std::size_t underscore = name.rfind('_');
  if (underscore == std::string_view::npos) return 0;
  const std::string_view digits = name.substr(underscore + 1);
  int label = 0;
  std::from_chars(digits.data(), digits.data() + digits.size(), label);
  return label;
}

std::string getNameLabeledConst(std::string_view name, int n) {
  std::string labeled(name);
  return labeled.append("_").append(std::to_string(n));
}

std::string getNameLabeled(std::string_view name, int& counter) {
  std::string labeled;
  do {
    labeled = getNameLabeledConst(name, counter++);
  } while (ATOMT::Predicates().contains(labeled));
  return labeled;
}

std::string getNameAtomLabeled(std::string_view name) {
  std::string labeled = "#";
  return labeled.append(std::to_string(static_cast<std::uint32_t>(cont()))).append(name);
}

void check_template_name(std::string_view name) {
  if (name.find_first_of("\"(") == std::string_view::npos) return;
  std::string text = "a predicate or attribute in a template must be a plain name, not ";
  report(Code::kQuotedTemplateName, text.append(name));
}

std::string_view getNameWithoutPrefix(std::string_view name) {
  const auto* const first =
      std::find_if(name.begin(), name.end(), [](char c) { return c > '9' || c < 0 || c == '-'; });
  return name.substr(static_cast<std::size_t>(first - name.begin()));
}

std::string_view cut_at_underscore(std::string_view name, LeadingUnderscores leading) {
  const std::size_t first = std::min(name.find_first_not_of('_'), name.size());
  const std::size_t end = std::min(name.find('_', first), name.size());
  const std::size_t begin = leading == LeadingUnderscores::kSkip ? first : 0;
  return name.substr(begin, end - begin);
}

}    // namespace zarel
