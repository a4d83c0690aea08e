#include "workbench/answers/forms.h"

#include <algorithm>
#include <array>

namespace workbench {
namespace {

struct Row {
  std::string_view name;
  std::unique_ptr<AnswerConsumer> (*make)(std::ostream& out, const FormSettings& settings);
};

constexpr std::array kForms{
    Row{"text", make_text_form},
};

}    // namespace

std::vector<std::string> form_names() {
  std::vector<std::string> names;
  for (const Row& row : kForms) names.emplace_back(row.name);
  return names;
}

std::unique_ptr<AnswerConsumer> make_form(std::string_view name, std::ostream& out,
                                          const FormSettings& settings) {
  return std::ranges::find(kForms, name, &Row::name)->make(out, settings);
}

}    // namespace workbench
