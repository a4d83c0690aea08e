#include "workbench/pages/pages.h"

namespace workbench {

std::span<const Page> program_pages() {
  return {};
}

}    // namespace workbench
