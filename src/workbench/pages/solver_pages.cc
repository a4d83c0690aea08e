#include "workbench/pages/pages.h"

namespace workbench {

std::span<const Page> solver_pages() {
  return {};
}

}    // namespace workbench
