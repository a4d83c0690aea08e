#include "workbench/pages/pages.h"

namespace workbench {

std::span<const Page> template_pages() {
  return {};
}

}    // namespace workbench
