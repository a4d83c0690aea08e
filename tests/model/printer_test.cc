// The text of the rewritten program.

#include "model/printer.h"

#include "model_fixture.h"

namespace zarel {
namespace {

struct Print {
  std::string_view name;
  void (*print)(std::ostream& out);
  std::string_view text;
  friend void PrintTo(const Print& test, std::ostream* out) { *out << test.name; }
};
class Printing : public ModelTable<Print> {};
TEST_P(Printing, GivesTheExactText) {
  std::ostringstream out;
  GetParam().print(out);
  EXPECT_EQ(out.str(), GetParam().text);
}

using Out = std::ostream;
const auto x = [] { return newTERMT("X"); };
const auto p = [] { return atom("p", x()); };
const auto clause = [](CLAUSET::Payload payload) { return CLAUSET{std::move(payload), {}}; };
void weak(Out& out, const TERMT& weight, const TERMT& level) {
  out << clause(WeakConstraint(body(no(atom("q")), yes(p())), {weight, level}));
}
void count(Out& out, const Guard& lower, const Guard& upper, Equality equality = Equality::kNo) {
  out << count_of("X", body(yes(p())), lower, upper, equality);
}

const Print kPrints[] = {
    {"terms",
     [](Out& out) {
       const TERMT least = num(-2147483647 - 1), anonymous = TERMT::anonymous();
       const TERMT quoted = newTERMT("\"a b\""), function = function_term("F");
       const TERMT star = TERMT::asterisk(), dollar = TERMT::dollar();
       const Terms terms{x(), quoted, num(7), least, star, anonymous, dollar, function};
       print_list(out, terms, "|");
     },
     "X|\"a b\"|7|-2147483648|*|_|$|F"},
    {"separators_around_absent_terms",
     [](Out& out) { out << atom("p", num(1), TERMT::absent(), num(2)); }, "p(1,,2)"},

    {"atom_without_arguments", [](Out& out) { out << atom("p"); }, "p"},
    {"atom", [](Out& out) { out << typed_atom("p", list(newTERMT("a"), num(1)), Type::kIdb); },
     "p(a,1)"},
    {"strongly_negated", [](Out& out) { out << newNegativeATOMT("p", list(newTERMT("a"))); },
     "-p(a)"},
    {"comparison", [](Out& out) { out << newBuiltin(BUILTIN::kLess, list(x(), newTERMT("Y"))); },
     "<(X,Y)"},
    {"sum", [](Out& out) { out << newBuiltin(BUILTIN::kPlus, list(x(), num(1), num(-2))); },
     "+(X,1,-2)"},
    {"int", [](Out& out) { out << newBuiltin(BUILTIN::kInt, list(x())); }, "#int(X)"},
    {"builtin_without_terms", [](Out& out) { out << newBuiltin(BUILTIN::kEqual, {}); }, "=="},

    {"strict_and_inclusive_guard", [](Out& out) { count(out, strict(num(1)), inclusive(num(3))); },
     "1 < #count{X:p(X)} <= 3"},
    {"inclusive_and_strict_guard",
     [](Out& out) { count(out, inclusive(newTERMT("N")), strict(newTERMT("M"))); },
     "N <= #count{X:p(X)} < M"},
    {"no_guards", [](Out& out) { count(out, {}, {}); }, "#count{X:p(X)}"},
    {"upper_guard_only", [](Out& out) { count(out, {}, strict(num(3))); }, "#count{X:p(X)} < 3"},
    {"equality", [](Out& out) { count(out, strict(newTERMT("N")), {}, Equality::kYes); },
     "N = #count{X:p(X)}"},
    {"equality_over_inclusive",
     [](Out& out) { count(out, inclusive(num(2)), inclusive(num(2)), Equality::kYes); },
     "2 = #count{X:p(X)} = 2"},
    {"constant_guards_are_left_out",
     [](Out& out) { count(out, strict(newTERMT("a")), inclusive(function_term("F"))); },
     " < #count{X:p(X)} <= "},
    {"aggregate_lists",
     [](Out& out) {
       out << aggregate(AggregateFunction::kSum, {x(), num(1)},
                        body(no(atom("q")), yes(p()), yes(atom("r"))), strict(num(0)));
     },
     "0 < #sum{X,1:p(X), r, not q}"},
    {"aggregate_functions",
     [](Out& out) {
       for (std::uint32_t code = 0; code < 7; ++code) {
         out << aggregate(AggregateFunction{code}, {}, body(), {});
       }
     },
     "#any{:}#avg{:}#count{:}#max{:}#min{:}#sum{:}#times{:}"},

    {"invocation",
     [](Out& out) {
       const ATOMT pattern = atom("p", TERMT::asterisk(), TERMT::dollar());
       out << ATOMT(invocation("t", list(x(), num(1)), pattern, atom("q")));
     },
     "t[p(*,$), q] (X,1)"},
    {"bare_invocation", [](Out& out) { out << ATOMT(invocation("t", list())); }, "t[] ()"},
    {"external",
     [](Out& out) { out << ATOMT::external("f", list(x(), num(1)), list(num(2), num(3))); },
     "&f[X,1](2,3)"},
    {"bare_external", [](Out& out) { out << ATOMT::external("f", {}, {}); }, "&f[]()"},

    {"fact", [](Out& out) { out << clause(rule(heads(atom("p")))); }, "p."},
    {"disjunctive_rule",
     [](Out& out) {
       out << clause(rule(heads(atom("a"), atom("b")), no(atom("d")), yes(atom("c", x()))));
     },
     "a v b :- c(X), not d."},
    {"rule_without_head", [](Out& out) { out << clause(rule(heads(), yes(p()))); }, " :- p(X)."},
    {"constraint", [](Out& out) { out << clause(Constraint(body(no(atom("q")), yes(p())))); },
     ":- p(X), not q."},
    {"maxint", [](Out& out) { out << clause(num(20)); }, "#maxint = 20."},
    {"weak", [](Out& out) { weak(out, TERMT::absent(), TERMT::absent()); }, ":~ p(X), not q. "},
    {"weak_weight", [](Out& out) { weak(out, num(3000), TERMT::absent()); },
     ":~ p(X), not q. [3:]"},
    {"weak_level", [](Out& out) { weak(out, TERMT::absent(), num(2)); }, ":~ p(X), not q. [:2]"},
    {"weak_weight_and_level", [](Out& out) { weak(out, num(1000), num(2)); },
     ":~ p(X), not q. [1:2]"},
    {"weak_variables", [](Out& out) { weak(out, newTERMT("W"), newTERMT("L")); },
     ":~ p(X), not q. [W:L]"},
    {"weight_divided_unsigned", [](Out& out) { weak(out, num(-1000), num(-1)); },
     ":~ p(X), not q. [4294966:-1]"},
    {"weight_rounded_down", [](Out& out) { weak(out, num(1999), num(0)); },
     ":~ p(X), not q. [1:0]"},

    {"list_of_one", [](Out& out) { print_list(out, body(no(p())), ", "); }, "not p(X)"},
    {"empty_list", [](Out& out) { print_list(out, body(), ", "); }, ""},
    {"list_of_clauses",
     [](Out& out) {
       print_list(out, std::vector{clause(rule(heads(atom("p")))), clause(rule(heads(atom("q"))))},
                  "\n");
     },
     "p.\nq."},
    {"list_of_formals",
     [](Out& out) {
       print_list(out, std::vector<FORMALPRED>{{"p", 1}, {"q", 0}}, ", ");
     },
     "p(1), q(0)"},
};
INSTANTIATE_TEST_SUITE_P(Cases, Printing, testing::ValuesIn(kPrints), case_name);

using PrinterTest = ModelTest;
TEST_F(PrinterTest, AnUnnamedVariableEndsTheRunSilently) {
  const ATOMT unnamed = atom("p", TERMT::variable(3));
  std::ostringstream out;
  EXPECT_EQ(end_of([&] { out << unnamed; }), 1);
  EXPECT_EQ(out.str() + errors_.str(), "");
}

}    // namespace
}    // namespace zarel
