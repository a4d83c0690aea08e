#include "output/framespace_display.h"

#include <algorithm>

#include "model/generic_encoding.h"
#include "output/answer_terms.h"

namespace zarel {
namespace {

void append_shortened(std::string& out, const NamespaceTable& namespaces, std::string_view piece) {
  const auto [prefix, local_name] = qualified_name(namespaces, piece);
  if (prefix.empty()) {
    out += piece;
  } else {
    out.append(prefix).append(1, ':').append(local_name);
  }
}

}    // namespace

std::string getFramespace(const DisplaySettings& settings, std::string_view ns) {
  if (settings.space && ns == kDefaultSpace) return {};
  std::string suffix = "@";
  suffix += ns;
  return suffix;
}

std::string returnAddress(const NamespaceTable& namespaces, std::string_view args) {
  std::string out;
  std::size_t begin = 0;
  while (true) {
    const std::size_t comma = std::min(args.find(',', begin), args.size());
    append_shortened(out, namespaces, args.substr(begin, comma - begin));
    if (comma == args.size()) return out;
    out += ',';
    begin = comma + 1;
  }
}

}    // namespace zarel
