#include "dl/names.h"

#include <cstring>

namespace dl {
namespace {

constexpr std::string_view kHexDigits = "0123456789abcdef";

// Appends the string that starts at `position` without clingo's escapes; returns the position after
// it.
std::size_t append_string(std::string& out, std::string_view printed, std::size_t position) {
  out += '"';
  for (++position; position < printed.size() && printed[position] != '"'; ++position) {
    if (printed[position] != '\\' || position + 1 == printed.size()) {
      out += printed[position];
      continue;
    }
    const char escaped = printed[++position];
    out += escaped == 'n' ? '\n' : escaped;
  }
  out += '"';
  return position + 1;
}

// Appends the string that append_name_part() wrote so.
void append_string_part(std::string& out, std::string_view part) {
  out += '"';
  for (std::size_t i = 0; i < part.size(); ++i) {
    if (part[i] != '_') {
      out += part[i];
      continue;
    }
    out += static_cast<char>(kHexDigits.find(part[i + 1]) * 16 + kHexDigits.find(part[i + 2]));
    i += 2;
  }
  out += '"';
}

// Appends the word that starts at `position` without our prefix; returns the position after it.
std::size_t append_word(std::string& out, std::string_view printed, std::size_t position) {
  std::size_t end = position;
  while (end < printed.size() && is_word(printed[end])) ++end;
  std::string_view word = printed.substr(position, end - position);
  if (word.starts_with("_s")) {
    append_string_part(out, word.substr(2));
    return end;
  }
  if (word.starts_with("_n")) {
    word.remove_prefix(2);
  } else if (word.starts_with("_t")) {
    word.remove_prefix(2);
    out += '#';
  }
  out += word;
  return end;
}

}    // namespace

void append_clingo_name(std::string& out, std::string_view name) {
  if (name.front() == '#') {
    out += "_t";
    name.remove_prefix(1);
  } else if (!is_lower(name.front()) || name == "not") {
    out += "_n";
  }
  out += name;
}

void append_clingo_string(std::string& out, std::string_view quoted) {
  const std::string_view inside = quoted.substr(1, quoted.size() - 2);
  out += '"';
  for (const char c : inside) {
    if (c == '\n') {
      out += "\\n";
      continue;
    }
    if (c == '\\') out += '\\';
    out += c;
  }
  out += '"';
}

void append_name_part(std::string& out, std::string_view term) {
  if (term.front() != '"') {
    out += term;
    return;
  }
  std::string string;
  append_string(string, term, 0);
  out += "_s";
  for (const char c : std::string_view(string).substr(1, string.size() - 2)) {
    if (is_word(c) && c != '_') {
      out += c;
      continue;
    }
    const auto code = static_cast<unsigned char>(c);
    ((out += '_') += kHexDigits[code / 16]) += kHexDigits[code % 16];
  }
}

void append_input_spelling(std::string& out, std::string_view printed) {
  std::size_t position = 0;
  while (position < printed.size()) {
    const char c = printed[position];
    if (c == '"') {
      position = append_string(out, printed, position);
    } else if (is_word(c)) {
      position = append_word(out, printed, position);
    } else {
      out += c;
      ++position;
    }
  }
}

bool needs_respelling(std::string_view printed) {
  // An escape needs a backslash, and a name of ours is a word that begins with an underscore.
  if (std::memchr(printed.data(), '\\', printed.size()) != nullptr) return true;
  for (std::size_t i = printed.find('_'); i != std::string_view::npos;
       i = printed.find('_', i + 1)) {
    if (i == 0 || !is_word(printed[i - 1])) return true;
  }
  return false;
}

}    // namespace dl
