#include "workbench/messages/catalogue.h"

#include <algorithm>
#include <unordered_map>
#include <vector>

#include "workbench/pages/pages.h"

namespace workbench {

std::span<const Page> pages() {
  static const std::vector<Page> all = [] {
    std::vector<Page> joined;
    for (const std::span<const Page> part :
         {syntax_pages(), foreign_pages(), program_pages(), template_pages(), warning_pages(),
          solver_pages(), data_pages(), picture_pages(), command_pages()}) {
      joined.insert(joined.end(), part.begin(), part.end());
    }
    return joined;
  }();
  return all;
}

const Page* page_of(std::string_view code) {
  static const std::unordered_map<std::string_view, const Page*> by_code = [] {
    std::unordered_map<std::string_view, const Page*> result;
    for (const Page& page : pages()) result.emplace(page.code, &page);
    return result;
  }();
  const auto found = by_code.find(code);
  return found == by_code.end() ? nullptr : found->second;
}

}    // namespace workbench
