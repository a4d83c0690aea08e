#pragma once
// graph.h - what a picture shows, before anybody knows how it is laid out.

#include <cstddef>
#include <cstdint>
#include <string>
#include <utility>
#include <vector>

namespace workbench {

// A group of boxes in a frame of its own, or in that of another one.
struct Cluster {
  std::string label;
  std::uint32_t parent = 0;
};
inline constexpr std::uint32_t kNoCluster = 0;    // the picture as a whole

struct Box {
  enum class Shape : std::uint8_t {
    kObject,
    kRelation,    // small: an atom of many arguments; a relation that rules define
    kText,        // lines that belong to no object
  };
  std::string title;
  std::uint32_t cluster = kNoCluster;
  Shape shape = Shape::kObject;
  bool is_negated = false;    // strongly
  bool is_faint = false;      // there, and without use
  struct Line {
    std::string text;
    bool is_negated = false;
  };
  std::vector<Line> lines = {};
};

struct Arrow {
  enum class Kind : std::uint8_t {
    kPlain,
    kSubclass,      // from the lower class to the upper one
    kMembership,    // from the object to its class
    kDashed,        // under "not"
  };
  std::uint32_t from = 0;
  std::uint32_t to = 0;
  std::string label = {};
  Kind kind = Kind::kPlain;
  bool is_negated = false;
};

struct Graph {
  std::vector<Cluster> clusters = {{}};    // the first one is the picture
  std::vector<Box> boxes = {};
  std::vector<Arrow> arrows = {};

  std::uint32_t add(Box box) {
    boxes.push_back(std::move(box));
    return static_cast<std::uint32_t>(boxes.size() - 1);
  }
  std::uint32_t add_cluster(std::string label, std::uint32_t parent) {
    clusters.push_back({std::move(label), parent});
    return static_cast<std::uint32_t>(clusters.size() - 1);
  }
};

}    // namespace workbench
