#include "workbench/pages/pages.h"

namespace workbench {

std::span<const Page> warning_pages() {
  return {};
}

}    // namespace workbench
