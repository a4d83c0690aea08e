#include "output/sinks.h"

#include <algorithm>
#include <array>

namespace zarel {
namespace {

struct Format {
  std::string_view name;
  std::unique_ptr<AnswerSink> (*make)(std::ostream& out, Run& run);
};

constexpr std::array kFormats{
    Format{"text", make_text_sink},
};

}    // namespace

std::unique_ptr<AnswerSink> make_sink(std::string_view format, std::ostream& out, Run& run) {
  const auto found = std::ranges::find(kFormats, format, &Format::name);
  return found == kFormats.end() ? nullptr : found->make(out, run);
}

}    // namespace zarel
