#pragma once
// name_table.h - every spelling the program has seen, each stored once; and numbers given to names.

#include <cstdint>
#include <cstring>
#include <memory_resource>
#include <optional>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "model/short_name.h"

namespace zarel {

enum class NameId : std::uint32_t {};

constexpr std::uint32_t to_index(NameId id) {
  return static_cast<std::uint32_t>(id);
}

// Spellings to ids and back. Open addressing over hashes and ids: a look-up that finds touches one
// slot and one name, and a short name holds its own text. See Note [short names].
class NameTable {
 public:
  NameId intern(std::string_view spelling);    // the same spelling gives the same id
  std::optional<NameId> find(std::string_view spelling) const;
  // Valid as long as the table, and ended by a NUL.
  std::string_view spelling(NameId id) const { return name(to_index(id)).spelling(); }
  // Adds the spelling to the text.
  void append_to(Text& out, NameId id) const { name(to_index(id)).append_to(out); }
  std::size_t size() const { return size_; }

  // Has the name, and when that is there, its text brought from memory.
  void expect(NameId id) const { __builtin_prefetch(&name(to_index(id))); }
  void expect_text(NameId id) const { name(to_index(id)).expect_text(); }

 private:
  // Note [short names]
  // Most names of a large program are short, and a look-up of one among a million costs what it
  // misses in the caches. So the text of a short name stands in its entry; only a longer one's is
  // kept apart. Entries never move, since spellings given out point into them.
  class Name {
   public:
    static constexpr std::size_t kLongestInside = kLongestShortName;    // without the NUL

    explicit Name(std::string_view text) : length_(static_cast<std::uint32_t>(text.size())) {
      if (is_inside()) {
        std::memcpy(inside_, text.data(), text.size());
      } else {
        const char* const begin = text.data();
        std::memcpy(inside_, &begin, sizeof(begin));
      }
    }
    std::string_view spelling() const {
      if (is_inside()) return {inside_, length_};
      const char* text = nullptr;
      std::memcpy(&text, inside_, sizeof(text));
      return {text, length_};
    }
    void append_to(Text& out) const {
      if (is_inside()) return out.add_from_field<sizeof(inside_)>(inside_, length_);
      out += spelling();
    }

    void expect_text() const {
      if (!is_inside()) __builtin_prefetch(spelling().data());
    }

   private:
    bool is_inside() const { return length_ <= kLongestInside; }

    std::uint32_t length_;
    char inside_[kLongestInside + 1] = {};    // the text, or a pointer to it
  };
  static_assert(sizeof(Name) == 16);

  struct Slot {
    std::uint32_t hash;
    std::uint32_t entry;    // id + 1; 0 for a free slot
  };

  static constexpr std::size_t kChunk = 4096;    // names
  const Name& name(std::uint32_t index) const { return chunks_[index / kChunk][index % kChunk]; }
  template <class IsEqual>
  std::size_t slot_of(std::uint32_t hash, IsEqual is_equal) const;
  std::size_t slot_of(std::string_view spelling, std::uint32_t& hash) const;
  std::string_view kept_apart(std::string_view spelling);
  void add(std::string_view spelling);
  void grow();

  std::vector<std::vector<Name>> chunks_;    // each reserved once, whole
  std::vector<Slot> slots_;                  // a power of two of them
  std::uint32_t size_ = 0;
  std::pmr::monotonic_buffer_resource texts_{std::size_t{64} * 1024};
};

// The names of the current run.
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

 private:
  std::vector<std::uint32_t> number_of_name_;    // by name id: number + 1, 0 for none
  std::vector<NameId> names_;
};

}    // namespace zarel
