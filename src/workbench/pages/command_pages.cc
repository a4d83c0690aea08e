#include "workbench/pages/pages.h"

namespace workbench {

std::span<const Page> command_pages() {
  return {};
}

}    // namespace workbench
