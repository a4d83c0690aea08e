#include "workbench/answers/forms.h"

#include <algorithm>
#include <array>
#include <filesystem>

namespace workbench {
namespace {

struct Row {
  std::string_view name;
  std::string_view endings;    // of files, each with a blank behind it
  std::unique_ptr<AnswerConsumer> (*make)(std::ostream& out, const FormSettings& settings);
};

constexpr std::array kForms{
    Row{"text", ".txt ", make_text_form},  Row{"lines", ".lines ", make_lines_form},
    Row{"table", "", make_table_form},     Row{"json", ".json .jsonl ", make_json_form},
    Row{"csv", ".csv ", make_csv_form},    Row{"facts", ".zrl .facts ", make_facts_form},
    Row{"diff", ".diff ", make_diff_form}, Row{"dot", ".dot .gv ", make_dot_form},
    Row{"svg", ".svg ", make_svg_form},    Row{"report", ".html .htm ", make_report_form},
};

}    // namespace

std::vector<std::string> form_names() {
  std::vector<std::string> names;
  names.reserve(kForms.size());
  for (const Row& row : kForms) names.emplace_back(row.name);
  return names;
}

std::string form_for_file(std::string_view file) {
  if (is_folder(std::string(file))) return "csv";
  const std::string ending = std::filesystem::path(file).extension().string() + ' ';
  const auto has_ending = [&ending](const Row& row) {
    return row.endings.find(ending) != std::string_view::npos;
  };
  const auto* const found = std::ranges::find_if(kForms, has_ending);
  return std::string(found == kForms.end() || ending == " " ? "text" : found->name);
}

std::unique_ptr<AnswerConsumer> make_form(std::string_view name, std::ostream& out,
                                          const FormSettings& settings) {
  return std::ranges::find(kForms, name, &Row::name)->make(out, settings);
}

}    // namespace workbench
