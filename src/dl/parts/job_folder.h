#pragma once
// job_folder.h - a search in parts as files, for machines that share nothing but a folder:
//
//   manifest     what the search is: the format, the versions, digests of the other files, the
//                command line of a part; it never changes
//   base.aspif   the ground program
//   cubes        the parts, a line each, numbered from 0
//   tables       how answers are read out, see answer_tables.h
//   cubes.N      a part that was divided, and the parts that stand for it
//   bound        the best cost so far, at the highest level
//   out/I        the result of part I; out/I.cut: what a run found that did not finish
//
// A part is a function of these files, so it does not matter where, when and how often it runs.
// What appears here does so whole or not at all. All functions throw Failure: kJobFolder where the
// folder is not what it should be, kOutputFailure where a file cannot be written.

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "dl/parts/answer_tables.h"
#include "dl/parts/ground_program.h"
#include "dl/parts/part_arguments.h"
#include "dl/parts/part_output.h"

namespace dl {

struct Manifest {
  std::string dl_version, clingo_version;
  std::string base, cubes, tables;       // their digests
  std::vector<std::string> arguments;    // of clingo, for a part
};

// What a part has, in front of its answers.
struct ResultHead {
  bool is_complete = false;
  std::string clingo_version;
  std::uint64_t found = 0;    // answer sets
  std::optional<PartCosts> costs;
  bool has_consequences = false;
  double seconds = 0;    // of a core
};

class JobFolder {
 public:
  // Refuses a folder that has anything in it: a search is not cut for nothing.
  static void expect_unused(const std::string& folder);
  // Makes the folder, with its parents, for a search that was cut. Refuses what expect_unused()
  // does.
  static void make(const std::string& folder, Manifest manifest, const GroundProgram& program,
                   const std::vector<Cube>& cubes, const AnswerTables& tables);

  // Opens one that was made.
  explicit JobFolder(std::string folder);

  const Manifest& manifest() const { return manifest_; }
  const SearchAim& aim() const { return aim_; }
  std::size_t count() const { return parts_.size(); }    // of numbers that were given
  // The parts that are not divided, in the order of the cut.
  const std::vector<std::size_t>& order() const { return order_; }
  bool is_divided(std::size_t part) const { return parts_[part].is_divided; }
  const std::vector<std::size_t>& pieces_of(std::size_t part) const { return parts_[part].pieces; }
  const Cube& cube(std::size_t part) const { return parts_[part].cube; }
  // Compared with their digests.
  GroundProgram program() const;
  AnswerTables tables() const;

  // Replaces the part by others, which get the next numbers, unless somebody else has just done
  // that.
  void divide(std::size_t part, const std::vector<Cube>& cubes);

  std::optional<std::int64_t> bound() const;
  void offer_bound(std::int64_t highest) const;

  void put_result(std::size_t part, const ResultHead& head, const PartOutput& output) const;

  enum class Result : std::uint8_t { kMissing, kForeign, kComplete };
  // Whether there is a result, and its head. A foreign one is that of another search, or damaged.
  Result look_at_result(std::size_t part, ResultHead& head) const;
  std::optional<ResultHead> look_at_cut_result(std::size_t part) const;
  // Hands the answers on in lines, until `take` says that it wants no more. Returns whether it did
  // not.
  bool read_answers(std::size_t part, bool is_complete,
                    const std::function<bool(std::string_view)>& take) const;

  std::string result_name(std::size_t part, bool is_complete = true) const;

 private:
  struct PartEntry {
    Cube cube;
    bool is_divided = false;
    std::vector<std::size_t> pieces = {};
  };
  void read_manifest();
  void read_cubes();
  bool read_division(std::size_t number);
  void list_order(std::size_t part);
  std::string first_line(std::size_t part) const;
  Result read_head(std::size_t part, bool is_complete, ResultHead& head, std::size_t* begin,
                   std::size_t* size) const;

  std::string folder_;
  Manifest manifest_;
  std::string digest_;    // of the manifest
  SearchAim aim_;
  std::vector<PartEntry> parts_;
  std::vector<std::size_t> order_;
  std::size_t undivided_ = 0;    // how many the manifest's cubes are
  std::size_t divisions_ = 0;
};

// "3, 5-7 and 9": the numbers are in order. `last` stands in front of the last ones.
std::string ranges(const std::vector<std::size_t>& numbers, std::string_view separator,
                   std::string_view last);

}    // namespace dl
