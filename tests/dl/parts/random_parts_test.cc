// random_parts_test.cc - over random programs: parts joined are the whole, in any order, twice, two
// at once, with one that was killed, and divided again; and so are parts on one machine, and races.
#include <algorithm>
#include <filesystem>
#include <gtest/gtest.h>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "../../support/run_program.h"
#include "../explain/random_seeds.h"
#include "dl/answer_reader.h"
#include "dl/clingo_run.h"
#include "dl/failure.h"
#include "dl/model_reader.h"
#include "dl/parts/crew.h"
#include "dl/parts/jobs.h"
#include "dl/translate.h"

namespace dl_test {
namespace {

// Disjunction, loops of both kinds, sums, weak constraints of several levels, queries.
class RandomSearch {
 public:
  explicit RandomSearch(unsigned seed) : random_(seed) {
    text_ = "#maxint = 9. n(1). n(2). n(3). s(1,2). s(2,3).\n";
    if (below(4) != 0) text_ += "p(X) v q(X) :- n(X).\n";
    if (below(3) == 0) text_ += "r(X) v r(Y) :- s(X,Y). t v u v r(2).\n";
    const int rules = 1 + below(5);
    for (int i = 0; i < rules; ++i) text_ += statement() + "\n";
    const int costs = below(2) == 0 ? 0 : 1 + below(3);
    for (int i = 0; i < costs; ++i) {
      text_ += ":~ " + body() + ". [" + one_of({"1", "2", "3", "X"}) + ":" +
               one_of({"1", "1", "2", "3"}) + "]\n";
    }
    if (below(3) == 0) text_ += body() + (below(3) == 0 ? "" : ", p(X)") + "?\n";
    options.answer_sets = below(4) == 0 ? 1 + static_cast<std::uint64_t>(below(3)) : 0;
    options.leave_out_facts = below(4) == 0;
    if (below(2) == 0) options.reasoning = dl::Reasoning::kBrave;
    options.parts = 2 + static_cast<std::uint64_t>(below(12));
  }

  const std::string& text() const { return text_; }
  int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  dl::Options options;

 private:
  std::string one_of(const std::vector<std::string>& words) {
    return words[static_cast<std::size_t>(below(static_cast<int>(words.size())))];
  }
  std::string atom() {
    std::string name = one_of({"p", "p", "q", "q", "r", "t", "u"});
    if (name == "t" || name == "u") return name;
    return name + "(" + one_of({"X", "X", "1", "2", "3"}) + ")";
  }
  std::string literal() {
    if (below(6) == 0) {
      return "#" + one_of({"sum", "count", "max"}) + "{Y : " + one_of({"p", "q", "r"}) + "(Y)} " +
             one_of({">", "<=", ">="}) + " " + one_of({"1", "2", "3"});
    }
    return (below(3) == 0 ? "not " : "") + atom();
  }
  std::string body() {
    std::string text = one_of({"n(X)", "n(X)", "s(X,_)", "s(_,X)"});
    for (int i = below(3); i > 0; --i) text += ", " + literal();
    return text;
  }
  std::string statement() {
    switch (below(8)) {
      case 0:
        return ":- " + body() + ", " + literal() + ".";
      case 1:
        return "t v u.";
      case 2:
        return "t :- not u. u :- not t.";
      case 3:
        return "p(X) :- q(X), n(X). q(X) :- p(X), not r(X), n(X).";
      case 4:
        return "r(X) :- s(X,Y), r(Y).";
      case 5:
        return atom() + " :- " + body() + ".";
      default:
        return atom() + " v " + atom() + (below(2) == 0 ? " v " + atom() : "") + " :- " + body() +
               ".";
    }
  }

  std::mt19937 random_;
  std::string text_;
};

// Lines in order, and in each the atoms: both depend on the search.
std::vector<std::string> sorted_answers(const std::string& text) {
  std::vector<std::string> lines;
  std::istringstream in(text);
  for (std::string line; std::getline(in, line);) {
    const std::size_t open = line.find('{');
    if (open != std::string::npos) {
      std::vector<std::string> atoms;
      std::istringstream inside(line.substr(open + 1, line.size() - open - 2));
      for (std::string atom; std::getline(inside, atom, ' ');) {
        if (atom.ends_with(',')) atom.pop_back();
        atoms.push_back(atom);
      }
      std::ranges::sort(atoms);
      line.resize(open + 1);
      for (const std::string& atom : atoms) (line += atom) += ' ';
    }
    lines.push_back(line);
  }
  std::ranges::sort(lines);
  return lines;
}

dl::Translated translated(const RandomSearch& search) {
  const dl::Source source{"p", search.text()};
  return dl::translate(dl::survey_texts({&source, 1}), search.options);
}

// Nothing where the program is none, or its integers leave 32 bits.
std::optional<std::string> whole(const RandomSearch& search, const dl::Options& options) {
  dl::Translated program = translated(search);
  if (program.mistake) return std::nullopt;
  std::string text;
  const dl::SearchOutput output{[&](std::string_view answers) { text += answers; },
                                [](const zarel::Diagnostic&) {}, [](std::string_view) {}};
  dl::ClingoRun clingo(options, output);
  clingo.start(program.parts.traits);
  clingo.solve(program);
  return text;
}

std::string joined(const dl::JobFolder& jobs, bool is_partial = false) {
  dl::AnswerTables tables = jobs.tables();
  dl::AnswerReader answers(tables.program, tables.reasoning);
  dl::join_parts(jobs, is_partial, [&](std::string_view line) {
    answers.read_line(line);
    return true;
  });
  answers.finish(dl::Search::kComplete, [](const zarel::Diagnostic&) {});
  return std::move(answers.text());
}

// Any answer sets will do, as long as there are as many as are asked for.
void expect_same(const std::string& found, const std::string& all, const RandomSearch& search) {
  const std::vector<std::string> lines = sorted_answers(found);
  const std::vector<std::string> expected = sorted_answers(all);
  if (search.options.answer_sets == 0 || all.find('{') == std::string::npos) {
    EXPECT_EQ(lines, expected) << search.text();
    return;
  }
  const auto sets = [](const std::vector<std::string>& text) {
    return static_cast<std::uint64_t>(std::ranges::count_if(
        text, [](const std::string& line) { return line.find('{') != std::string::npos; }));
  };
  EXPECT_EQ(sets(lines), std::min(search.options.answer_sets, sets(expected))) << search.text();
  EXPECT_TRUE(std::ranges::includes(expected, lines)) << search.text() << found;
}

class Folder {
 public:
  explicit Folder(const RandomSearch& search) : program_(translated(search)) {
    dl::AnswerTables tables;
    tables.reasoning = search.options.reasoning;
    tables.program.sources = program_.sources;
    tables.program.parts = program_.parts;
    const dl::SearchPlan plan = dl::plan_search(search.options, program_.parts.traits);
    dl::make_jobs(name(), plan, program_.text, tables);
  }
  std::string name() const { return (folder_.path() / "jobs").string(); }
  dl::JobFolder open() const { return dl::JobFolder(name()); }

 private:
  zarel::WorkFolder folder_;
  dl::Translated program_;
};

void run_all(const dl::JobFolder& jobs, RandomSearch& search, bool takes_bound) {
  std::vector<std::size_t> order = jobs.order();
  for (std::size_t i = order.size(); i > 1; --i) {
    std::swap(order[i - 1], order[static_cast<std::size_t>(search.below(static_cast<int>(i)))]);
  }
  if (!order.empty()) order.push_back(order.front());    // twice
  for (const std::size_t part : order) dl::run_part(jobs, part, "clingo", takes_bound);
}

TEST(RandomParts, JoinedAreTheWhole) {
  std::size_t parts = 0;
  std::size_t divided = 0;
  each_seed(60, [&](unsigned seed) {
    RandomSearch search(seed);
    dl::Options every = search.options;
    every.answer_sets = 0;
    try {
      const std::optional<std::string> all = whole(search, every);
      if (!all) return;
      const Folder folder(search);
      dl::JobFolder jobs = folder.open();
      run_all(jobs, search, true);
      const std::string once = joined(jobs);
      expect_same(once, *all, search);
      parts += jobs.order().size();
      // Bounds that came in another order, or none, change nothing but which sets are picked.
      run_all(jobs, search, false);
      const std::string again = joined(jobs);
      expect_same(again, *all, search);
      if (search.options.answer_sets == 0) {
        EXPECT_EQ(once, again) << search.text();
      }
      if (jobs.order().empty()) return;
      // One that is lost is missed, and its pieces stand for it.
      const std::size_t lost = jobs.order()[jobs.order().size() / 2];
      std::filesystem::remove(jobs.result_name(lost));
      EXPECT_THROW(joined(jobs), dl::Failure);
      EXPECT_EQ(dl::missing_parts(jobs), std::vector<std::size_t>{lost});
      try {
        dl::divide_part(jobs, lost, 3, "clingo");
        ++divided;
      } catch (const dl::Failure&) {    // there is nothing to divide it by
      }
      for (const std::size_t part : dl::missing_parts(folder.open())) {
        dl::run_part(jobs, part, "clingo", true);
      }
      expect_same(joined(folder.open()), *all, search);
    } catch (const dl::Failure& failure) {
      EXPECT_EQ(failure.diagnostic.text, "") << search.text();
    } catch (const dl::FailedWorker& failed) {
      ADD_FAILURE() << failed.end.code << failed.end.errors << search.text();
    }
  });
  EXPECT_GT(parts, 200u);
  EXPECT_GT(divided, 5u);
}

TEST(RandomParts, OnThisMachineAreTheWhole) {
  each_seed(60, [&](unsigned seed) {
    RandomSearch search(seed);
    dl::Options every = search.options;
    every.answer_sets = 0;
    const std::optional<std::string> all = whole(search, every);
    if (!all) return;
    dl::Options in_parts = search.options;
    in_parts.cuts = dl::Cuts::kLocal;
    expect_same(*whole(search, in_parts), *all, search);
    in_parts.cuts = dl::Cuts::kAuto;
    expect_same(*whole(search, in_parts), *all, search);
    dl::Options race = search.options;
    race.configuration = "race";
    expect_same(*whole(search, race), *all, search);
  });
}

}    // namespace
}    // namespace dl_test
