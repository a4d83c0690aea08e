#pragma once
// namespaces.h - the declared name spaces: short prefixes for long URIs.

#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

namespace zarel {

// The (prefix, URI) pairs of a program, in the order of their declaration. URIs keep the double
// quotes around them.
class NamespaceTable {
 public:
  // Declares a prefix. Returns false, and keeps the first declaration, when the prefix has one.
  bool declare(std::string_view prefix, std::string_view quoted_uri);

  bool existNameSpace(std::string_view prefix) const;

  // The URI of a prefix, quotes included; nothing for an unknown prefix.
  std::optional<std::string_view> uri_of(std::string_view prefix) const;

  // The first declared prefix whose quoted URI is exactly this and the closing quote; nothing when
  // there is none. So the beginning of an address is found without a copy.
  std::optional<std::string_view> prefix_of_opening(std::string_view uri_without_end) const;

  const std::vector<std::pair<std::string, std::string>>& pairs() const { return pairs_; }
  bool is_empty() const { return pairs_.empty(); }

 private:
  struct TextHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view text) const {
      return std::hash<std::string_view>{}(text);
    }
  };
  using PositionOf = std::unordered_map<std::string, std::size_t, TextHash, std::equal_to<>>;

  std::vector<std::pair<std::string, std::string>> pairs_;
  PositionOf by_prefix_;
  PositionOf by_uri_;    // the first pair of each URI, its closing quote left out
};

// The program's table (the established name), and whether a term of the input was written with a
// declared prefix: only then are URIs shortened again in the answer sets.
NamespaceTable& vectorName();
bool prefix_was_used();
void note_prefix_use();

// What all addresses of the prefix begin with: its URI without the closing quote. Nothing when the
// prefix is not declared.
std::optional<std::string_view> opening_of_address(std::string_view prefix);

// The full quoted address of prefix:local, which is the prefix's URI with the local name in front
// of its closing quote. Nothing when the prefix is not declared.
std::optional<std::string> returnAddress(std::string_view prefix, std::string_view local);

}    // namespace zarel
