#pragma once
// name_table.h - every spelling the program has seen, each stored once; and numbers given to names.

#include <cstdint>
#include <memory_resource>
#include <optional>
#include <string_view>
#include <vector>

namespace zarel {

enum class NameId : std::uint32_t {};

constexpr std::uint32_t to_index(NameId id) {
  return static_cast<std::uint32_t>(id);
}

// Spellings to ids and back. Open addressing over the ids: a look-up touches one slot and one
// spelling, and a name costs its bytes and about 24 more.
class NameTable {
 public:
  NameId intern(std::string_view spelling);    // the same spelling gives the same id
  std::optional<NameId> find(std::string_view spelling) const;
  std::string_view spelling(NameId id) const;    // valid until clear()
  std::size_t size() const { return names_.size(); }
  void clear();

 private:
  struct Name {
    const char* text;
    std::uint32_t length;
    std::uint32_t hash;
  };

  std::size_t slot_of(std::string_view spelling, std::uint32_t hash) const;
  void grow();

  std::vector<Name> names_;
  std::vector<std::uint32_t> slots_;    // id + 1; 0 for a free slot; a power of two of them
  std::pmr::monotonic_buffer_resource texts_{std::size_t{64} * 1024};
};

// The names of this process's program.
NameTable& names();

// Numbers 0, 1, 2, ... given to names in the order in which they are first seen.
class NameNumbering {
 public:
  struct Entry {
    std::uint32_t number;
    bool is_new;
  };

  Entry enter(NameId name);
  std::optional<std::uint32_t> find(NameId name) const;
  NameId name(std::uint32_t number) const { return names_[number]; }
  std::uint32_t size() const { return static_cast<std::uint32_t>(names_.size()); }
  void clear();

 private:
  std::vector<std::uint32_t> number_of_name_;    // by name id: number + 1, 0 for none
  std::vector<NameId> names_;
};

}    // namespace zarel
