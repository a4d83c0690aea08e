#include "output/framespace_display.h"

#include <algorithm>

#include "model/generic_encoding.h"

namespace zarel {
namespace {

void append_shortened(std::string& out, const NamespaceTable& namespaces, std::string_view piece) {
  const std::size_t hash_sign = piece.find('#');
  // Declared URIs end in # and a quote, so that a piece without # can be none of them.
  if (!piece.ends_with('"') || hash_sign == std::string_view::npos) {
    out += piece;
    return;
  }
  const auto prefix = namespaces.prefix_of_opening(piece.substr(0, hash_sign + 1));
  if (!prefix) {
    out += piece;
    return;
  }
  piece.remove_suffix(1);
  out.append(*prefix).append(1, ':').append(piece.substr(hash_sign + 1));
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
