#include "model/names.h"

#include <algorithm>
#include <charconv>

#include "model/report.h"
#include "model/template_records.h"

namespace zarel {
namespace {

std::string_view shown_name(const ATOMT& atom) {
  return ATOMT::Predicates().name(atom.predicate());
}

std::string_view comparable_name(const ATOMT& atom) {
  return cut_at_underscore(getNameWithoutPrefix(shown_name(atom)), LeadingUnderscores::kSkip);
}

std::string template_labeled(std::uint32_t number, std::string_view name) {
  std::string labeled = "#";
  return labeled.append(std::to_string(number)).append(name);
}

}    // namespace

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

std::string getAtomLabeled(std::string_view name) {
  int counter = 0;
  return getNameLabeled(name, counter);
}

std::string getNameTemplateLabeled(const DEFINITIONATOM& definition) {
  return template_labeled(definition.sequence_number, definition.name);
}

std::string getNameAtomLabeled(std::string_view name) {
  return template_labeled(static_cast<std::uint32_t>(cont()), name);
}

void check_template_name(std::string_view name) {
  if (name.find_first_of("\"(") == std::string_view::npos) return;
  std::string text = "a predicate or attribute in a template must be a plain name, not ";
  report(Code::kQuotedTemplateName, text.append(name));
}

std::string_view getName(std::string_view name) {
  const auto* const first =
      std::find_if(name.begin(), name.end(), [](char c) { return c > '9' || c < 0; });
  return name.substr(static_cast<std::size_t>(first - name.begin()));
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

bool isFormalPred(const ATOMT& atom, std::span<const std::pair<const char*, ATOMT>> formals) {
  const std::string_view name = getName(shown_name(atom));
  return std::any_of(formals.begin(), formals.end(),
                     [&](const auto& formal) { return name == formal.first; });
}

bool esiste(const TCONJUNCTION<ATOMT>& list, const ATOMT& atom) {
  const std::string_view name = comparable_name(atom);
  return std::any_of(list.positive().begin(), list.positive().end(),
                     [&](const ATOMT& other) { return comparable_name(other) == name; });
}

bool parametersCoincidence(std::span<const TERMT> a, std::span<const TERMT> b) {
  return std::equal(a.begin(), a.end(), b.begin(), [](const TERMT& pattern, const TERMT& term) {
    const bool is_marker = pattern.kind == TermKind::kAsterisk || pattern.kind == TermKind::kDollar;
    return is_marker || pattern == term;
  });
}

}    // namespace zarel
