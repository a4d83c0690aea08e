#include "model/namespaces.h"

namespace zarel {

bool NamespaceTable::declare(std::string_view prefix, std::string_view quoted_uri) {
  if (existNameSpace(prefix)) return false;
  by_prefix_.emplace(prefix, pairs_.size());
  if (quoted_uri.ends_with('"')) {
    // Keeps the first pair of a URI.
    by_uri_.emplace(quoted_uri.substr(0, quoted_uri.size() - 1), pairs_.size());
  }
  pairs_.emplace_back(prefix, quoted_uri);
  return true;
}

bool NamespaceTable::existNameSpace(std::string_view prefix) const {
  return by_prefix_.find(prefix) != by_prefix_.end();
}

std::optional<std::string_view> NamespaceTable::uri_of(std::string_view prefix) const {
  const auto found = by_prefix_.find(prefix);
  if (found == by_prefix_.end()) return std::nullopt;
  return pairs_[found->second].second;
}

std::optional<std::string_view> NamespaceTable::prefix_of_opening(
    std::string_view uri_without_end) const {
  const auto found = by_uri_.find(uri_without_end);
  if (found == by_uri_.end()) return std::nullopt;
  return pairs_[found->second].first;
}

std::optional<std::string_view> opening_of_address(std::string_view prefix) {
  const auto uri = vectorName().uri_of(prefix);
  if (!uri) return std::nullopt;
  return uri->substr(0, uri->find('"', 1));
}

std::optional<std::string> returnAddress(std::string_view prefix, std::string_view local) {
  const auto opening = opening_of_address(prefix);
  if (!opening) return std::nullopt;
  std::string address(*opening);
  address.append(local).push_back('"');
  return address;
}

}    // namespace zarel
