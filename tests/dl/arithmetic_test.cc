// arithmetic_test.cc - integers: ranges, sums, products, successors; and aggregates with all their
// guards.
#include <algorithm>
#include <functional>
#include <random>
#include <vector>

#include "run_dl.h"

namespace dl_test {
namespace {

constexpr Case kArithmetic[] = {
    {"int_ranges_up_to_the_bound",
     "p(X) :- #int(X). #maxint = 3. r(X) :- #int(X), >=(X,1), <=(X,2).",
     "{p(0), p(1), p(2), p(3), r(1), r(2)}\n"},
    {"int_tests", "q(2). q(7). q(a). p(X) :- q(X), #int(X). r(X) :- q(X), not #int(X).",
     "{q(2), q(7), q(a), p(2), r(7), r(a)}\n", "-N=5"},
    {"succ_both_ways",
     "#maxint = 4. q(2). q(4). p(X) :- q(Y), #succ(X,Y). r(Y) :- q(X), #succ(X,Y).",
     "{q(2), q(4), p(1), p(3), r(3)}\n"},
    {"nothing_bound", "#maxint = 2. p(X,Y) :- #succ(X,Y). q(X,Y) :- +(X,Y,2).",
     "{p(0,1), p(1,2), q(0,2), q(1,1), q(2,0)}\n"},
    {"sum_of_all_forms",
     "q(1). q(5). p(Z) :- q(X), +(X,3,Z). r(Z) :- q(X), Z = X + 3. s(Y) :- q(Z), Z = 3 + Y. "
     "t(X) :- q(Z), +(X,1,Z).",
     "{q(1), q(5), p(4), p(8), r(4), r(8), s(2), t(0), t(4)}\n"},
    {"product_of_all_forms",
     "q(12). q(5). q(0). p(Z) :- q(X), Z = X * 4. r(Z) :- q(X), *(4,X,Z). s(Y) :- q(Z), Z = 4 * Y.",
     "{q(12), q(5), q(0), p(48), p(20), p(0), r(48), r(20), r(0), s(3), s(0)}\n"},
    {"sum_beyond_the_bound_does_not_hold",
     "#maxint = 5. q(3). q(2). p(Z) :- q(X), q(Y), Z = X + Y. ", "{q(3), q(2), p(5), p(4)}\n"},
    {"sum_tested", "t(1,2,3). t(1,2,4). p :- t(X,Y,Z), Z = X + Y. q(Z) :- t(X,Y,Z), Z = X + Y.",
     "{p, t(1,2,3), t(1,2,4), q(3)}\n"},
    {"product_with_zero_is_open_up_to_the_bound",
     "#maxint = 2. q(0). q(1). p(X,Y) :- q(X), *(X,Y,0).",
     "{q(0), q(1), p(1,0), p(0,0), p(0,1), p(0,2)}\n"},
    {"product_beyond_the_bound_does_not_hold",
     "#maxint = 100000. q(100000). p(Z) :- q(X), Z = X * X. s(Z) :- q(X), Z = X * 1.",
     "{q(100000), s(100000)}\n"},
    {"chained_assignments", "q(2). p(C) :- C = B * B, B = A + 1, q(A).", "{q(2), p(9)}\n"},
    {"arithmetic_over_texts_does_not_hold", "q(a). q(\"b\"). q(1). p(Z) :- q(X), Z = X + 1.",
     "{q(a), q(\"b\"), q(1), p(2)}\n"},
    {"bound_as_a_term", "#maxint = 9. p(#maxint). q(X) :- p(X), X == #maxint.", "{p(9), q(9)}\n"},
    {"option_before_directive", "#maxint = 9. p(#maxint).", "{p(4)}\n", "-N=4"},
    {"results_up_to_the_greatest_integer",
     "q(2147483646). p(Z) :- q(X), Z = X + 1. r(Z) :- q(X), Z = X * 1.",
     "{q(2147483646), p(2147483647), r(2147483646)}\n"},
    {"guards_before_the_sum_prevent_overflow",
     "q(2147483647). q(1). p(Z) :- q(X), X < 5, Z = X + X.", "{q(2147483647), q(1), p(2)}\n"},
    {"sum_aggregate_up_to_what_is_watched", "q(2147483645). q(1). p(S) :- S = #sum{X:q(X)}.",
     "{q(2147483645), q(1), p(2147483646)}\n"},
    {"possible_sum_up_to_what_is_watched",
     "p(2147483645) v a. p(1) v b. q :- 0 = #sum{X:p(X)}. r :- #sum{X:p(X)} >= 2147483646.",
     "{a, b, q}\n{a, p(1)}\n{b, p(2147483645)}\n{p(1), p(2147483645), r}\n"},
    {"anonymous_operands_are_variables_of_their_own",
     "q(1). s(X) :- q(X), X = _ + 1. m(X) :- q(X), X = _ * 1, _ = X + X. i(X) :- q(X), #int(_), "
     "#succ(_,X), +(_,_,X). c(N) :- N = #count{X:q(X), X = _ + 1}.",
     "{q(1), s(1), m(1), i(1), c(1)}\n", "-N=2"},
    {"operands_beyond_the_bound_do_not_hold",
     "s(7). s(0). a(Y) :- s(X), Y = X * 0. b(Y) :- s(X), Y = 0 * X. c(X) :- s(X), *(X,7,0). "
     "d(Z) :- *(Z,7,0). e(Z) :- s(Y), *(Z,Y,0), Z < 1.",
     "{s(7), s(0), a(0), b(0), e(0)}\n", "-N=3"},
    {"variables_between_known_bounds_up_to_the_greatest_integer",
     "q(2147483646). q(5). a(Z) :- q(X), Z = X + 1, Z > 2147483640. b(X) :- q(X), X > 2147483640, "
     "X <= 2147483647. c(N) :- N = #count{X:q(X), Y == 2147483647, 2147483640 < X, X <= Y}. d(X) "
     ":- "
     "q(X), X >= 2147483640, X <= #maxint, X = X * 1. #maxint = 2147483647.",
     "{q(2147483646), q(5), a(2147483647), b(2147483646), c(1), d(2147483646)}\n"},
};
INSTANTIATE_TEST_SUITE_P(Arithmetic, Programs, testing::ValuesIn(kArithmetic), case_name);

constexpr Case kAggregates[] = {
    {"left_guards",
     "q(1). q(5). l1 :- 1 < #count{X:q(X)}. l2 :- 2 < #count{X:q(X)}. le2 :- 2 <= #count{X:q(X)}. "
     "le3 :- 3 <= #count{X:q(X)}. g3 :- 3 > #count{X:q(X)}. g2 :- 2 > #count{X:q(X)}. ge2 :- 2 >= "
     "#count{X:q(X)}. ge1 :- 1 >= #count{X:q(X)}. e2 :- 2 = #count{X:q(X)}. e1 :- 1 = "
     "#count{X:q(X)}.",
     "{l1, le2, g3, ge2, e2, q(1), q(5)}\n"},
    {"right_guards",
     "q(1). q(5). l3 :- #count{X:q(X)} < 3. l2 :- #count{X:q(X)} < 2. ge6 :- #sum{X:q(X)} >= 6. "
     "ge7 :- #sum{X:q(X)} >= 7. g5 :- #sum{X:q(X)} > 5. g6 :- #sum{X:q(X)} > 6. e(N) :- "
     "#sum{X:q(X)} = N.",
     "{l3, ge6, g5, q(1), q(5), e(6)}\n"},
    {"two_guards",
     "q(1). q(5). a :- 1 < #count{X:q(X)} <= 2. b :- 2 < #count{X:q(X)} <= 3. c :- 0 <= "
     "#count{X:q(X)} < 2.",
     "{a, q(1), q(5)}\n"},
    {"negated", "q(1). a :- not 2 <= #count{X:q(X)}. b :- not 1 <= #count{X:q(X)}.", "{a, q(1)}\n"},
    {"strongly_negated_atom_behind_the_colon",
     "-q(1). ~r(1,2). a :- 1 = #count{X:-q(X)}. b :- 2 = #sum{Y,X:~r(X,Y), -q(X)}.",
     "{a, b, -q(1), -r(1,2)}\n"},
    {"sum_counts_each_tuple",
     "w(a,2). w(b,2). s(N) :- N = #sum{W,X:w(X,W)}. t(N) :- N = #sum{W:w(_,W)}.",
     "{w(a,2), w(b,2), s(4), t(2)}\n"},
    {"global_variables", "g(a). g(b). m(a,1). m(a,2). n(X,N) :- g(X), N = #count{Y:m(X,Y)}.",
     "{g(a), g(b), m(a,1), m(a,2), n(b,0), n(a,2)}\n"},
    {"local_variables_of_two_aggregates",
     "p(1). p(2). q(3). a :- 2 = #count{X:p(X)}, 1 = #count{X:q(X)}.", "{a, p(1), p(2), q(3)}\n"},
    {"several_literals_inside",
     "p(1). p(2). q(2). r(3). a(N) :- N = #count{X:p(X), not q(X), X < 5}.",
     "{p(1), p(2), q(2), r(3), a(1)}\n"},
    {"min_and_max_bind", "p(3). p(7). a(N) :- N = #min{X:p(X)}. b(N) :- N = #max{X:p(X)}.",
     "{p(3), p(7), a(3), b(7)}\n"},
    {"extrema_of_nothing",
     "p(1) :- q. z v q. a :- 0 <= #min{X:p(X)}. b :- #max{X:p(X)} <= 9. c(N) :- N = #min{X:p(X)}. "
     "d(N) :- N = #max{X:p(X)}. e :- 9 > #max{X:p(X)}. f :- not 0 <= #min{X:p(X)}.",
     "{q, a, e, b, p(1), c(1), d(1)}\n{z, f}\n"},
    {"average",
     "p(1). p(2). p(6). a :- 3 = #avg{X:p(X)}. b :- 3 < #avg{X:p(X)}. c :- 2 < #avg{X:p(X)} <= 3. "
     "d :- 3 >= #avg{X:q(X)}.",
     "{a, c, p(1), p(2), p(6)}\n"},
    {"average_of_no_integer",
     "p(a). p(\"1\"). e :- 3 = #avg{X:p(X)}. l :- 3 <= #avg{X:p(X)}. "
     "g :- 3 >= #avg{X:p(X)}. b :- 2 <= #avg{X:p(X)} <= 4. n :- 1 = #avg{X:p(X), X < 9}.",
     "{p(a), p(\"1\")}\n"},
    {"average_passes_over_what_is_no_integer", "p(a). p(2). p(4). e :- 3 = #avg{X:p(X)}.",
     "{p(a), p(2), p(4), e}\n"},
    {"average_and_a_guard_that_is_no_integer",
     "p(1). p(5). g(a). g(3). e(G) :- g(G), G = #avg{X:p(X)}. l(G) :- g(G), G < #avg{X:p(X)}. "
     "le(G) :- g(G), G <= #avg{X:p(X)}. gt(G) :- g(G), G > #avg{X:p(X)}. ge(G) :- g(G), G >= "
     "#avg{X:p(X)}. b(G) :- g(G), 2 < #avg{X:p(X)} < G. be(G) :- g(G), 2 < #avg{X:p(X)} <= G.",
     "{p(1), p(5), g(a), g(3), e(3), le(3), gt(a), ge(3), ge(a), b(a), be(3), be(a)}\n"},
    {"arithmetic_inside", "p(1). p(2). a(N) :- N = #count{Z:p(X), Z = X + 1, Z > 2}.",
     "{p(1), p(2), a(1)}\n"},
};
INSTANTIATE_TEST_SUITE_P(Aggregates, Programs, testing::ValuesIn(kAggregates), case_name);

// A rule over A, B and C, and all that its body says of them under the bound 3.
class RandomBody {
 public:
  explicit RandomBody(std::mt19937& random) : random_(random) {
    literals_ = {"n(A)"};
    if (below(2) == 0) literals_.emplace_back("n(B)");
    while (literals_.size() < 4) add_builtin();
    literals_.emplace_back("C = A * B");
    holds_.emplace_back([](const int* v) { return times(v[0], v[1], v[2]); });
  }

  std::string rule(int number) {
    std::ranges::shuffle(literals_, random_);
    std::string text = joined({"r", std::to_string(number), "(A,B,C) :- "});
    for (const std::string& literal : literals_) {
      text += literal + (&literal == &literals_.back() ? ".\n" : ", ");
    }
    return text;
  }

  // The atoms of the rule's head; 7 and `a`, which is greater, are no integers up to the bound.
  std::string atoms(int number) const {
    constexpr int kValues[] = {0, 1, 2, 3, 7, kText};
    std::string all;
    for (const int a : kValues) {
      for (const int b : kValues) {
        for (const int c : kValues) {
          const int values[] = {a, b, c};
          const bool holds = is_fact(a) && (!has("n(B)") || is_fact(b)) &&
                             std::ranges::all_of(holds_, [&](auto& test) { return test(values); });
          if (!holds) continue;
          all += joined(
              {", r", std::to_string(number), "(", name(a), ",", name(b), ",", name(c), ")"});
        }
      }
    }
    return all;
  }

 private:
  static constexpr int kText = 100;
  static bool is_fact(int value) { return value != 1 && value != 3; }
  static std::string name(int value) { return value == kText ? "a" : std::to_string(value); }
  static bool plus(int x, int y, int z) { return x <= 3 && y <= 3 && z <= 3 && x + y == z; }
  static bool times(int x, int y, int z) { return x <= 3 && y <= 3 && z <= 3 && x * y == z; }
  int below(int limit) { return static_cast<int>(random_() % static_cast<unsigned>(limit)); }
  bool has(std::string_view literal) const {
    return std::ranges::find(literals_, literal) != literals_.end();
  }

  void add_builtin() {
    const int x = below(3);
    const int y = below(3);
    const int z = below(3);
    const int k = below(4);
    const auto v = [](int index) { return std::string(1, "ABC"[index]); };
    switch (below(6)) {
      case 0:
        literals_.push_back(joined({v(z), " = ", v(x), " + ", v(y)}));
        return holds_.emplace_back([=](const int* w) { return plus(w[x], w[y], w[z]); }), void();
      case 1:
        literals_.push_back(joined({"+(", v(x), ",", std::to_string(k), ",", v(z), ")"}));
        return holds_.emplace_back([=](const int* w) { return plus(w[x], k, w[z]); }), void();
      case 2:
        literals_.push_back(joined({"*(", v(x), ",", v(y), ",", v(z), ")"}));
        return holds_.emplace_back([=](const int* w) { return times(w[x], w[y], w[z]); }), void();
      case 3:
        literals_.push_back(joined({std::to_string(k), " = ", v(x), " * ", v(y)}));
        return holds_.emplace_back([=](const int* w) { return times(w[x], w[y], k); }), void();
      case 4:
        literals_.push_back(joined({"#succ(", v(x), ",", v(y), ")"}));
        return holds_.emplace_back([=](const int* w) { return plus(w[x], 1, w[y]); }), void();
      default:
        literals_.push_back(joined({v(x), " == ", std::to_string(k)}));
        return holds_.emplace_back([=](const int* w) { return w[x] == k; }), void();
    }
  }

  std::mt19937& random_;
  std::vector<std::string> literals_;
  std::vector<std::function<bool(const int*)>> holds_;
};

TEST(Arithmetic, OfRandomBodiesIsWhatTryingAllValuesGives) {
  std::mt19937 random(1);
  for (int program = 0; program < 10; ++program) {
    std::string text = "n(0). n(2). n(7). n(a).\n";
    std::string expected = "{n(0), n(2), n(7), n(a)";
    for (int i = 0; i < 100; ++i) {
      RandomBody body(random);
      text += body.rule(i);
      expected += body.atoms(i);
    }
    EXPECT_EQ(sorted(run(text, "-N=3").output), sorted(expected + "}\n")) << text;
  }
}

// Without a bound 0 * Y = 0 gives Y no value, but something else in the body may, and through the
// value of another unknown factor.
struct Body {
  std::string_view name;
  std::vector<std::string> literals;
  std::string_view out;
  friend void PrintTo(const Body& test, std::ostream* stream) { *stream << test.name; }
};
class OpenFactors : public testing::TestWithParam<Body> {};
// Products of their own do not multiply the ways to another.
TEST(Arithmetic, OfManyOpenFactorsIsFollowedWhereTheyAreRelated) {
  const std::string rule = "r(A) :- z(Z), w(W), 0 = A * Z, W = A * 2" +
                           numbered(500, ", 4 = BN * 2, BN < CN, 6 = CN * 2") + ".";
  EXPECT_EQ(run("z(0). z(2). w(8). " + rule, "-pfilter=r"), (Outcome{"{r(4)}\n", "", 0}));
}

TEST_P(OpenFactors, HaveTheSameAnswersInEveryOrder) {
  std::vector<std::string> literals = GetParam().literals;
  std::ranges::sort(literals);
  std::string rules = "z(0). z(2). w(4). w(8).\n";
  std::string inside = rules;
  int count = 0;
  do {
    std::string body;
    for (const std::string& literal : literals) (body += body.empty() ? "" : ", ") += literal;
    rules += joined({"r", std::to_string(count), "(A,B) :- ", body, ".\n"});
    inside += joined({"r", std::to_string(count++), "(N) :- N = #count{A,B:", body, "}.\n"});
  } while (std::ranges::next_permutation(literals).found);
  std::string expected = "{w(4), w(8), z(0), z(2)";
  std::string numbers = expected;
  const auto pairs = std::ranges::count(GetParam().out, '(');
  for (int i = 0; i < count; ++i) {
    std::string atoms(GetParam().out);
    for (std::size_t at = 0; (at = atoms.find('(', at)) != std::string::npos; at += 2) {
      atoms.insert(at, joined({"r", std::to_string(i)}));
      at += std::to_string(i).size();
    }
    expected += ", " + atoms;
    numbers += joined({", r", std::to_string(i), "(", std::to_string(pairs), ")"});
  }
  EXPECT_EQ(sorted(run(rules).output), sorted(expected + "}\n"));
  EXPECT_EQ(sorted(run(inside).output), sorted(numbers + "}\n"));
}
const Body kBodies[] = {
    {"a_sum", {"z(X)", "z(Z)", "X = A * Z", "w(B)", "B = A + 1"}, "(3,4), (7,8)"},
    {"an_equality", {"z(X)", "z(Z)", "X = A * Z", "A == 3", "B = 1"}, "(3,1)"},
    {"another_product", {"X = A * Z", "X == 0", "z(Z)", "w(B)", "B = A * 2"}, "(2,4), (4,8)"},
    {"the_sum_of_another_factor",
     {"0 = A * Z", "z(Z)", "w(W)", "W = B * 2", "B = A + 1"},
     "(1,2), (3,4)"},
};
INSTANTIATE_TEST_SUITE_P(Cases, OpenFactors, testing::ValuesIn(kBodies), case_name);

}    // namespace
}    // namespace dl_test
