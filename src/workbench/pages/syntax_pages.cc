#include "workbench/pages/pages.h"

namespace workbench {

std::span<const Page> syntax_pages() {
  return {};
}

}    // namespace workbench
