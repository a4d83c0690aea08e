// run_test.cc - runs side by side: each has tables of its own, and scopes nest.
#include "model/run.h"

#include <gtest/gtest.h>

#include "model/atom.h"

namespace zarel {
namespace {

TEST(Runs, KeepNamesClausesAndOptionsApart) {
  zarel::Run first({.OptionArityCheck = true});
  const zarel::Run::Scope scope(first);
  const NameId name = names().intern("p");
  GLOBALS().add(name);
  {
    zarel::Run second;
    const zarel::Run::Scope inner(second);
    EXPECT_FALSE(OptionArityCheck());
    EXPECT_EQ(names().find("p"), std::nullopt);
    EXPECT_FALSE(GLOBALS().contains(names().intern("p")));
    current_run().findings.parser_errors = 7;
    nclause() = 3;
  }
  EXPECT_TRUE(OptionArityCheck());
  EXPECT_EQ(names().find("p"), name);
  EXPECT_TRUE(GLOBALS().contains(name));
  EXPECT_EQ(current_run().findings.parser_errors + nclause(), 0);
}

struct Traced {
  ~Traced() { order += name; }
  char name = '?';
  static inline std::string order;
};
template <char kName>
struct Part : Traced {
  Part() { name = kName; }
};

TEST(Runs, EndTheirPartsInTheOppositeOrder) {
  {
    zarel::Run run;
    run.parts.get<Part<'b'>>();
    run.parts.get<Part<'a'>>();
    EXPECT_EQ(&run.parts.get<Part<'b'>>(), &run.parts.get<Part<'b'>>());
  }
  EXPECT_EQ(Traced::order, "ab");
}

}    // namespace
}    // namespace zarel
