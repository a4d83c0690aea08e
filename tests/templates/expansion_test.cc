// expansion_test.cc - what invocations become without options.

#include "templates_fixture.h"

namespace zarel {
namespace {

class PlainExpansion : public TemplatesTable<Rewriting> {};

TEST_P(PlainExpansion, BecomesPlainRules) {
  const RewrittenProgram result = rewritten({GetParam().program});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.messages, "");
  EXPECT_EQ(result.clauses, GetParam().clauses);
  EXPECT_EQ(legend_lines(result.legend), GetParam().legend);
}

constexpr Rewriting kCases[] = {
    {"no_invocations", "#template t{f(1)}(1) { t(X) :- f(X). } a(b).", "a_2(a,default,b).\n", ""},
    {"projects_dollar_away",
     "#template t{f(1)}(1) { t(X) :- f(X). }\n"
     "a(X) :- t{p(*,$)}(X).",
     "a_2(a,default,X) :- t_0(X).\n"
     "p_1(Var0) :- a_2(Var0,_,p).\n"
     "t_0(X) :- p_1(X).\n",
     "% p_1(Var0) : p(*,$) at line \n"
     "% t_0(X) : t[p(*,$)] (X) at line \n"},
    {"keeps_every_asterisk",
     "#template t{f(2)}(2) { t(X,Y) :- f(X,Y). }\n"
     "a(X) :- t{p(*,*)}(X,b).",
     "a_2(a,default,X) :- t_0(X,b).\n"
     "p_1(Var0,Var1) :- a_2(Var0,Var1,p).\n"
     "t_0(X,Y) :- p_1(X,Y).\n",
     "% p_1(Var0,Var1) : p(*,*) at line \n"
     "% t_0(X,b) : t[p(*,*)] (X,b) at line \n"},
    {"groups_by_ordinary_terms",
     "#template t{f(1)}(1) { t(X) :- f(X). }\n"
     "a(X) :- t{p(X,a,*)}(X).",
     "a_2(a,default,X) :- t_0(X,a,X).\n"
     "p_1(X0,C_const_1,Var0) :- a_3(X0,C_const_1,Var0,p).\n"
     "t_0(X0,C_const_1,X) :- p_1(X0,C_const_1,X).\n",
     "% p_1(X0,C_const_1,Var0) : p(X,a,*) at line \n"
     "% t_0(X,a,X) : t[p(X,a,*)] (X) at line \n"},
    {"gives_a_formal_atom_the_pattern_of_its_actual",
     "#template t{f(1)}(1) { t(X) :- f(X). }\n"
     "a(X) :- t{r(*,$,c)}(X).",
     "a_2(a,default,X) :- t_0(c,X).\n"
     "r_1(Var0,C_const_0) :- a_3(Var0,_,C_const_0,r).\n"
     "t_0(C_const_0,X) :- r_1(X,C_const_0).\n",
     "% r_1(Var0,C_const_0) : r(*,$,c) at line \n"
     "% t_0(c,X) : t[r(*,$,c)] (X) at line \n"},
    {"one_expansion_for_one_signature",
     "#template t{f(1)}(1) { t(X) :- f(X). }\n"
     "a(X,D) :- t{p(D,*)}(X), not t{p(E,*)}(D). :- t{p(a,*)}(b). :~ t{p(1,*)}(b).",
     "a_3(a,default,X,D) :- t_0(D,X), not t_0(E,D).\n"
     ":- t_0(a,b).\n"
     ":~ t_0(1,b). \n"
     "p_1(D0,Var0) :- a_2(D0,Var0,p).\n"
     "t_0(D0,X) :- p_1(D0,X).\n",
     "% p_1(D0,Var0) : p(D,*) at line \n"
     "% t_0(D,X) : t[p(D,*)] (X) at line \n"
     "% t_0(E,D) : t[p(E,*)] (D) at line \n"
     "% t_0(a,b) : t[p(a,*)] (b) at line \n"
     "% t_0(1,b) : t[p(1,*)] (b) at line \n"},
    {"replaces_every_occurrence_in_a_body",
     "#template t{f(1)}(1) { t(X) :- f(X). }\n"
     "a(X) :- t{p(*)}(X), not t{p(*)}(X), t{p(*)}(X).",
     "a_2(a,default,X) :- t_0(X), t_0(X), not t_0(X).\n"
     "p_1(Var0) :- a_1(Var0,p).\n"
     "t_0(X) :- p_1(X).\n",
     "% p_1(Var0) : p(*) at line \n"
     "% t_0(X) : t[p(*)] (X) at line \n"
     "% t_0(X) : t[p(*)] (X) at line \n"
     "% t_0(X) : t[p(*)] (X) at line \n"},
    {"expands_the_last_signature_first",
     "#template t{f(1)}(1) { t(X) :- f(X). }\n"
     "a(X) :- t{p(*)}(X).\n"
     "a(X) :- t{q(*)}(X).\n"
     "a(X) :- t{r(*)}(X).",
     "a_2(a,default,X) :- t_4(X).\n"
     "a_2(a,default,X) :- t_2(X).\n"
     "a_2(a,default,X) :- t_0(X).\n"
     "r_1(Var0) :- a_1(Var0,r).\n"
     "t_0(X) :- r_1(X).\n"
     "q_3(Var0) :- a_1(Var0,q).\n"
     "t_2(X) :- q_3(X).\n"
     "p_5(Var0) :- a_1(Var0,p).\n"
     "t_4(X) :- p_5(X).\n",
     "% r_1(Var0) : r(*) at line \n"
     "% t_0(X) : t[r(*)] (X) at line \n"
     "% q_3(Var0) : q(*) at line \n"
     "% t_2(X) : t[q(*)] (X) at line \n"
     "% p_5(Var0) : p(*) at line \n"
     "% t_4(X) : t[p(*)] (X) at line \n"},
    {"skips_a_name_that_is_taken",
     "#template t{f(1)}(1) { t(X) :- f(X). }\n"
     "a(X) :- t{t_0(*)}(X).",
     "a_2(a,default,X) :- t_1(X).\n"
     "t_0_2(Var0) :- a_1(Var0,t_0).\n"
     "t_1(X) :- t_0_2(X).\n",
     "% t_0_2(Var0) : t_0(*) at line \n"
     "% t_1(X) : t[t_0(*)] (X) at line \n"},
    {"swapped_actuals_are_another_use",
     "#template t{f(1),g(1)}(1) { t(X) :- f(X), g(X). }\n"
     "a(X) :- t{p(*),q(*)}(X), t{q(*),p(*)}(X).",
     "a_2(a,default,X) :- t_3(X), t_0(X).\n"
     "q_1(Var0) :- a_1(Var0,q).\n"
     "p_2(Var0) :- a_1(Var0,p).\n"
     "t_0(X) :- q_1(X), p_2(X).\n"
     "p_4(Var0) :- a_1(Var0,p).\n"
     "q_5(Var0) :- a_1(Var0,q).\n"
     "t_3(X) :- p_4(X), q_5(X).\n",
     "% q_1(Var0) : q(*), p(*) at line \n"
     "% p_2(Var0) : q(*), p(*) at line \n"
     "% t_0(X) : t[q(*), p(*)] (X) at line \n"
     "% p_4(Var0) : p(*), q(*) at line \n"
     "% q_5(Var0) : p(*), q(*) at line \n"
     "% t_3(X) : t[p(*), q(*)] (X) at line \n"},
    {"an_actual_without_parameters",
     "#template t{f(0)}(1) { t(X) :- f, h(X). }\n"
     "a(X) :- t{p}(X).",
     "a_2(a,default,X) :- t_0(X).\n"
     "p_1 :- a_0(p).\n"
     "t_0(X) :- p_1, h_0(X).\n",
     "% p_1 : p at line \n"
     "% t_0(X) : t[p] (X) at line \n"},
    {"an_atom_without_arguments_loses_group_by_terms",
     "#template t{f(0)}(1) { t(X) :- f, h(X). }\n"
     "a(X) :- t{p(X)}(X).",
     "a_2(a,default,X) :- t_0(X,X).\n"
     "p_1(X0) :- a_1(X0,p).\n"
     "t_0(X0,X) :- p_1, h_0(X0,X).\n",
     "% p_1(X0) : p(X) at line \n"
     "% t_0(X,X) : t[p(X)] (X) at line \n"},
    {"local_predicates_are_named_once_in_an_expansion",
     "#template t{f(1)}(1) { h(X) :- f(X). t(X) :- h(X). -h(X) :- t(X). }\n"
     "a(X) :- t{p(*)}(X), t{q(*)}(X).",
     "a_2(a,default,X) :- t_2(X), t_0(X).\n"
     "q_1(Var0) :- a_1(Var0,q).\n"
     "h_0(X) :- q_1(X).\n"
     "t_0(X) :- h_0(X).\n"
     "-h_0(X) :- t_0(X).\n"
     "p_3(Var0) :- a_1(Var0,p).\n"
     "h_1(X) :- p_3(X).\n"
     "t_2(X) :- h_1(X).\n"
     "-h_1(X) :- t_2(X).\n",
     "% q_1(Var0) : q(*) at line \n"
     "% t_0(X) : t[q(*)] (X) at line \n"
     "% p_3(Var0) : p(*) at line \n"
     "% t_2(X) : t[p(*)] (X) at line \n"},
    {"strong_negation_stays_on_local_and_result_atoms",
     "#template t{f(1)}(1) { t(X) :- -f(X), -h(X), not -t(X). }\n"
     "a(X) :- t{p(*,D)}(X).",
     "a_2(a,default,X) :- t_0(D,X).\n"
     "p_1(Var0,D0) :- a_2(Var0,D0,p).\n"
     "t_0(D0,X) :- p_1(X,D0), -h_0(D0,X), not -t_0(D0,X).\n",
     "% p_1(Var0,D0) : p(*,D) at line \n"
     "% t_0(D,X) : t[p(*,D)] (X) at line \n"},
    {"a_strongly_negated_actual",
     "#template t{f(0)}(1) { t(X) :- f, h(X). }\n"
     "a(X) :- t{-p}(X).",
     "a_2(a,default,X) :- t_0(X).\n"
     "-p_1 :- a_0(-p).\n"
     "t_0(X) :- -p_1, h_0(X).\n",
     "% -p_1 : -p at line \n"
     "% t_0(X) : t[-p] (X) at line \n"},
    {"bridges_global_predicates",
     "#template t{f(1)}(1) GLOBAL g { t(X) :- f(X), g(X), not -g(X). }\n"
     "a(X) :- t{p(*)}(X).",
     "a_2(a,default,X) :- t_0(X).\n"
     "p_1(Var0) :- a_1(Var0,p).\n"
     "g_0(X) :- g(X).\n"
     "-g_0(X) :- not g(X).\n"
     "t_0(X) :- p_1(X), g_0(X), not -g_0(X).\n",
     "% p_1(Var0) : p(*) at line \n"
     "% t_0(X) : t[p(*)] (X) at line \n"},
    {"bridges_carry_group_by_terms",
     "#template t{f(1),k(1)}(1) GLOBAL g { t(X) :- f(X), k(X), g(X,b). }\n"
     "a(X,D) :- t{p(*,D),q(*)}(X).",
     "a_3(a,default,X,D) :- t_0(D,X).\n"
     "p_1(Var0,D0) :- a_2(Var0,D0,p).\n"
     "q_2(Var0) :- a_1(Var0,q).\n"
     "g_0(D0,X,b) :- g(X,b), p_1(_,D0), q_2(_).\n"
     "t_0(D0,X) :- p_1(X,D0), q_2(X), g_0(D0,X,b).\n",
     "% p_1(Var0,D0) : p(*,D), q(*) at line \n"
     "% q_2(Var0) : p(*,D), q(*) at line \n"
     "% t_0(D,X) : t[p(*,D), q(*)] (X) at line \n"},
    {"facts_get_no_safety_literals",
     "#template t{f(1)}(1) { h(a). t(X) :- f(X), h(X). }\n"
     "a(X,D) :- t{p(*,D)}(X).",
     "a_3(a,default,X,D) :- t_0(D,X).\n"
     "p_1(Var0,D0) :- a_2(Var0,D0,p).\n"
     "h_0(D0,a).\n"
     "t_0(D0,X) :- p_1(X,D0), h_0(D0,X).\n",
     "% p_1(Var0,D0) : p(*,D) at line \n"
     "% t_0(D,X) : t[p(*,D)] (X) at line \n"},
    {"safety_literals_bind_group_by_terms",
     "#template t{f(1)}(1) { h(X) :- k(X), not f(X). :- h(X). :~ h(X). [X:3] t(X) :- f(X), h(X). "
     "}\n"
     "a(X,D) :- t{p(*,D,$)}(X).",
     "a_3(a,default,X,D) :- t_0(D,X).\n"
     "p_1(Var0,D0) :- a_3(Var0,D0,_,p).\n"
     "h_0(D0,X) :- k_0(D0,X), p(_,D0,_), not p_1(X,D0).\n"
     ":- h_0(D0,X), p(_,D0,_).\n"
     ":~ h_0(D0,X), p(_,D0,_). [X:3]\n"
     "t_0(D0,X) :- p_1(X,D0), h_0(D0,X).\n",
     "% p_1(Var0,D0) : p(*,D,$) at line \n"
     "% t_0(D,X) : t[p(*,D,$)] (X) at line \n"},
    {"safety_literals_are_dropped_by_name_up_to_the_underscore",
     "#template t{f(1)}(1) { t(X) :- p(X). t(X) :- p_y(X). t(X) :- q(X). }\n"
     "a(X,D) :- t{p_z(*,D)}(X).",
     "a_3(a,default,X,D) :- t_0(D,X).\n"
     "p_z_1(Var0,D0) :- a_2(Var0,D0,p_z).\n"
     "t_0(D0,X) :- p_0(D0,X).\n"
     "t_0(D0,X) :- p_y_0(D0,X).\n"
     "t_0(D0,X) :- q_0(D0,X), p(_,D0).\n",
     "% p_z_1(Var0,D0) : p_z(*,D) at line \n"
     "% t_0(D,X) : t[p_z(*,D)] (X) at line \n"},
    {"a_body_of_aggregates_gets_no_safety_literals",
     "#template t{f(1)}(1) { t(X) :- X = #count{Y:f(Y), not h(Y)}. }\n"
     "a(X,D) :- t{p(*,D)}(X).",
     "a_3(a,default,X,D) :- t_0(D,X).\n"
     "p_1(Var0,D0) :- a_2(Var0,D0,p).\n"
     "t_0(D0,X) :- X = #count{Y:p_1(Y,D0), not h_0(D0,Y)}.\n",
     "% p_1(Var0,D0) : p(*,D) at line \n"
     "% t_0(D,X) : t[p(*,D)] (X) at line \n"},
    {"builtins_functions_and_ranges",
     "#template t{f(1)}(1) { h(1..3). t(g(X)) :- f(X), X < 3, Y = X + 1, h(Y), #int(Y). }\n"
     "a(X) :- t{p(*)}(X).",
     "a_2(a,default,X) :- t_0(X).\n"
     "p_1(Var0) :- a_1(Var0,p).\n"
     "h_0(Var0) :- #int(Var0), >=(Var0,1), <=(Var0,3).\n"
     "t_0(F_g_0) :- p_1(X), <(X,3), +(X,1,Y), h_0(Y), #int(Y), #function_builtin(F_g_0,g,X).\n",
     "% p_1(Var0) : p(*) at line \n"
     "% t_0(X) : t[p(*)] (X) at line \n"},
    {"disjunctive_heads",
     "#template t{f(1)}(1) { t(X) v h(X) :- f(X). }\n"
     "a(X) :- t{p(*)}(X).",
     "a_2(a,default,X) :- t_0(X).\n"
     "p_1(Var0) :- a_1(Var0,p).\n"
     "t_0(X) v h_0(X) :- p_1(X).\n",
     "% p_1(Var0) : p(*) at line \n"
     "% t_0(X) : t[p(*)] (X) at line \n"},
    {"external_atoms_are_copied",
     "#template t{f(1)}(1) { t(X) :- f(X), &e[X]. }\n"
     "a(X) :- t{p(*)}(X).",
     "a_2(a,default,X) :- t_0(X).\n"
     "p_1(Var0) :- a_1(Var0,p).\n"
     "t_0(X) :- p_1(X), &e[X]().\n",
     "% p_1(Var0) : p(*) at line \n"
     "% t_0(X) : t[p(*)] (X) at line \n"},
    {"invocations_in_aggregates",
     "#template t{f(1)}(1) { t(X) :- f(X). }\n"
     "a(X) :- X = #count{Y: t{p(*)}(Y), not t{p(*)}(X)}.",
     "a_2(a,default,X) :- X = #count{Y:t_0(Y), not t_0(X)}.\n"
     "p_1(Var0) :- a_1(Var0,p).\n"
     "t_0(X) :- p_1(X).\n",
     "% p_1(Var0) : p(*) at line \n"
     "% t_0(Y) : t[p(*)] (Y) at line \n"
     "% t_0(X) : t[p(*)] (X) at line \n"},
    {"clauses_of_one_frame_share_an_aggregate",
     "#template t{f(1)}(1) { t(X) :- f(X). }\n"
     "o[a->X, b->X] :- q(X), 1 < #count{Y: t{p(*,X)}(Y), not t{p(*,1)}(Y)}.",
     "a_5(valueOf,defaultFlogic,o,a,X,\"->\") :- a_2(q,default,X), 1 < #count{Y:t_0(X,Y), not "
     "t_0(1,Y)}.\n"
     "a_5(valueOf,defaultFlogic,o,b,X,\"->\") :- a_2(q,default,X), 1 < #count{Y:t_0(X,Y), not "
     "t_0(1,Y)}.\n"
     "p_1(Var0,X0) :- a_2(Var0,X0,p).\n"
     "t_0(X0,X) :- p_1(X,X0).\n",
     "% p_1(Var0,X0) : p(*,X) at line \n"
     "% t_0(X,Y) : t[p(*,X)] (Y) at line \n"
     "% t_0(1,Y) : t[p(*,1)] (Y) at line \n"},
    {"frames_become_local_predicates",
     "#template t{f(1)}(1) { t(X) :- f(X), o[a->X]. o[b->X] :- f(X). }\n"
     "a(X) :- t{p(*)}(X).",
     "a_2(a,default,X) :- t_0(X).\n"
     "p_1(Var0) :- a_1(Var0,p).\n"
     "t_0(X) :- p_1(X), a_0(o,default,X).\n"
     "b_0(o,default,X) :- p_1(X).\n",
     "% p_1(Var0) : p(*) at line \n"
     "% t_0(X) : t[p(*)] (X) at line \n"},
    {"nested_templates",
     "#template t{f(1)}(1) { t(X) :- h(X), not u{h(*),f(*)}(X,b). h(X) :- f(X). }\n"
     "#template u{f(1),g(1)}(2) { u(X,Y) :- f(X), g(Y). }\n"
     "a(X) :- t{p(*)}(X).",
     "a_2(a,default,X) :- t_0(X).\n"
     "p_1(Var0) :- a_1(Var0,p).\n"
     "t_0(X) :- h_0(X), not u_2(X,b).\n"
     "h_0(X) :- p_1(X).\n"
     "h_0_3(Var0) :- a_1(Var0,h_0).\n"
     "p_1_4(Var0) :- a_1(Var0,p_1).\n"
     "u_2(X,Y) :- h_0_3(X), p_1_4(Y).\n",
     "% p_1(Var0) : p(*) at line \n"
     "% t_0(X) : t[p(*)] (X) at line \n"
     "% h_0_3(Var0) : h_0(*), p_1(*) at line \n"
     "% p_1_4(Var0) : h_0(*), p_1(*) at line \n"
     "% u_2(X,b) : u[h_0(*), p_1(*)] (X,b) at line \n"},
    {"nested_templates_carry_group_by_terms",
     "#template t{f(1)}(1) { t(X) :- u{h(*),f(*)}(X,b). h(X) :- f(X). }\n"
     "#template u{f(1),g(1)}(2) { u(X,Y) :- f(X), g(Y). }\n"
     "a(X,D) :- t{p(*,D)}(X).",
     "a_3(a,default,X,D) :- t_0(D,X).\n"
     "p_1(Var0,D0) :- a_2(Var0,D0,p).\n"
     "t_0(D0,X) :- u_2(D0,D0,X,b).\n"
     "h_0(D0,X) :- p_1(X,D0).\n"
     "h_0_3(D00,Var0) :- a_2(D00,Var0,h_0).\n"
     "p_1_4(Var0,D01) :- a_2(Var0,D01,p_1).\n"
     "u_2(D00,D01,X,Y) :- h_0_3(D00,X), p_1_4(Y,D01).\n",
     "% p_1(Var0,D0) : p(*,D) at line \n"
     "% t_0(D,X) : t[p(*,D)] (X) at line \n"
     "% h_0_3(D00,Var0) : h_0(D0,*), p_1(*,D0) at line \n"
     "% p_1_4(Var0,D01) : h_0(D0,*), p_1(*,D0) at line \n"
     "% u_2(D0,D0,X,b) : u[h_0(D0,*), p_1(*,D0)] (X,b) at line \n"},
    {"nested_in_an_aggregate",
     "#template t{f(1)}(1) { t(X) :- X = #count{Y:u{f(*)}(Y)}, f(X). }\n"
     "#template u{f(1)}(1) { u(X) :- f(X). }\n"
     "a(X) :- t{p(*)}(X).",
     "a_2(a,default,X) :- t_0(X).\n"
     "p_1(Var0) :- a_1(Var0,p).\n"
     "t_0(X) :- X = #count{Y:u_2(Y)}, p_1(X).\n"
     "p_1_3(Var0) :- a_1(Var0,p_1).\n"
     "u_2(X) :- p_1_3(X).\n",
     "% p_1(Var0) : p(*) at line \n"
     "% t_0(X) : t[p(*)] (X) at line \n"
     "% p_1_3(Var0) : p_1(*) at line \n"
     "% u_2(Y) : u[p_1(*)] (Y) at line \n"},
    {"a_nested_global_has_a_local_name",
     "#template t{f(1)}(1) GLOBAL g { t(X) :- u{g(*)}(X). }\n"
     "#template u{f(1)}(1) { u(X) :- f(X). }\n"
     "a(X) :- t{p(*)}(X).",
     "a_2(a,default,X) :- t_0(X).\n"
     "p_1(Var0) :- a_1(Var0,p).\n"
     "t_0(X) :- u_2(X).\n"
     "g_0_3(Var0) :- a_1(Var0,g_0).\n"
     "u_2(X) :- g_0_3(X).\n",
     "% p_1(Var0) : p(*) at line \n"
     "% t_0(X) : t[p(*)] (X) at line \n"
     "% g_0_3(Var0) : g_0(*) at line \n"
     "% u_2(X) : u[g_0(*)] (X) at line \n"},
    {"the_result_handed_on",
     "#template t{f(1)}(1) { t(X) :- f(X). t(X) :- u{t(*)}(X). }\n"
     "#template u{f(1)}(1) { u(X) :- f(X). }\n"
     "a(X) :- t{p(*)}(X).",
     "a_2(a,default,X) :- t_0(X).\n"
     "p_1(Var0) :- a_1(Var0,p).\n"
     "t_0(X) :- p_1(X).\n"
     "t_0(X) :- u_2(X).\n"
     "t_0_3(Var0) :- a_1(Var0,t_0).\n"
     "u_2(X) :- t_0_3(X).\n",
     "% p_1(Var0) : p(*) at line \n"
     "% t_0(X) : t[p(*)] (X) at line \n"
     "% t_0_3(Var0) : t_0(*) at line \n"
     "% u_2(X) : u[t_0(*)] (X) at line \n"},
    {"recursion_over_a_formal_predicate_closes",
     "#template t{e(2)}(2) { t(X,Y) :- e(X,Y). t(X,Y) :- e(X,Z), t{e(*,*)}(Z,Y). }\n"
     "a(X,Y) :- t{r(*,*)}(X,Y).\n"
     "a(X,Y) :- t{r(*,*,b)}(X,Y).",
     "a_3(a,default,X,Y) :- t_2(X,Y).\n"
     "a_3(a,default,X,Y) :- t_0(b,X,Y).\n"
     "r_1(Var0,Var1,C_const_0) :- a_3(Var0,Var1,C_const_0,r).\n"
     "t_0(C_const_0,X,Y) :- r_1(X,Y,C_const_0).\n"
     "t_0(C_const_0,X,Y) :- r_1(X,Z,C_const_0), t_0(C_const_0,Z,Y).\n"
     "r_3(Var0,Var1) :- a_2(Var0,Var1,r).\n"
     "t_2(X,Y) :- r_3(X,Y).\n"
     "t_2(X,Y) :- r_3(X,Z), t_2(Z,Y).\n",
     "% r_1(Var0,Var1,C_const_0) : r(*,*,b) at line \n"
     "% t_0(b,X,Y) : t[r(*,*,b)] (X,Y) at line \n"
     "% t_0(C_const_0,Z,Y) : t[r_1(*,*,C_const_0)] (Z,Y) at line \n"
     "% r_3(Var0,Var1) : r(*,*) at line \n"
     "% t_2(X,Y) : t[r(*,*)] (X,Y) at line \n"
     "% t_2(Z,Y) : t[r_3(*,*)] (Z,Y) at line \n"},
    {"a_signature_met_again_is_expanded_again",
     "#template t{f(1)}(1) { t(X) :- f(X). }\n"
     "#template u{f(1)}(1) { u(X) :- t{f(*)}(X). }\n"
     "a(X) :- t{p(*)}(X).\n"
     "a(X) :- u{p(*)}(X).",
     "a_2(a,default,X) :- t_2(X).\n"
     "a_2(a,default,X) :- u_0(X).\n"
     "p_1(Var0) :- a_1(Var0,p).\n"
     "u_0(X) :- t_2(X).\n"
     "p_3(Var0) :- a_1(Var0,p).\n"
     "t_2(X) :- p_3(X).\n"
     "p_5(Var0) :- a_1(Var0,p).\n"
     "t_4(X) :- p_5(X).\n",
     "% p_1(Var0) : p(*) at line \n"
     "% u_0(X) : u[p(*)] (X) at line \n"
     "% p_3(Var0) : p(*) at line \n"
     "% t_2(X) : t[p(*)] (X) at line \n"
     "% t_2(X) : t[p_1(*)] (X) at line \n"
     "% p_5(Var0) : p(*) at line \n"
     "% t_4(X) : t[p(*)] (X) at line \n"
     "% t_4(X) : t[p_1(*)] (X) at line \n"},
    {"places_run_over_taken_variables",
     "#template t{f(2)}(1) { t(X) :- f(X,X). }\n"
     "a(Var) :- t{p(Var,*,*)}(Var).",
     "a_2(a,default,Var) :- t_0(Var,Var).\n"
     "p_1(Var0,Var1,Var1) :- a_3(Var0,Var1,Var1,p).\n"
     "t_0(Var0,X) :- p_1(Var0,X,X).\n",
     "% p_1(Var0,Var1,Var1) : p(Var,*,*) at line \n"
     "% t_0(Var,Var) : t[p(Var,*,*)] (Var) at line \n"},
    {"fresh_names_meet_by_chance",
     "#template t{f(1)}(1) { t(D0) :- f(D0). }\n"
     "a(X,D) :- t{p(*,D)}(X).",
     "a_3(a,default,X,D) :- t_0(D,X).\n"
     "p_1(Var0,D0) :- a_2(Var0,D0,p).\n"
     "t_0(D0,D0) :- p_1(D0,D0).\n",
     "% p_1(Var0,D0) : p(*,D) at line \n"
     "% t_0(D,X) : t[p(*,D)] (X) at line \n"},
    {"two_actuals_of_one_predicate_share_a_pattern",
     "#template t{f(1),g(1)}(1) { t(X) :- f(X), g(X). }\n"
     "a(X,D) :- t{p(*,D),p(D,*)}(X).",
     "a_3(a,default,X,D) :- t_0(D,D,X).\n"
     "p_1(Var0,D0) :- a_2(Var0,D0,p).\n"
     "p_2(D1,Var0) :- a_2(D1,Var0,p).\n"
     "t_0(D0,D1,X) :- p_1(X,D0), p_2(X,D0).\n",
     "% p_1(Var0,D0) : p(*,D), p(D,*) at line \n"
     "% p_2(D1,Var0) : p(*,D), p(D,*) at line \n"
     "% t_0(D,D,X) : t[p(*,D), p(D,*)] (X) at line \n"},
};
INSTANTIATE_TEST_SUITE_P(Cases, PlainExpansion, testing::ValuesIn(kCases), case_name);

TEST_F(TemplatesTest, EndsAtAGlobalPredicateOfAnotherArity) {
  const RewrittenProgram result =
      rewritten({"#template t{f(1)}(1) GLOBAL g { t(X) :- f(X), g(X), not g(X,X). }"
                 "a(X) :- t{p(*)}(X)."});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.messages,
            "g is a global predicate first used with arity 1, now seen with arity 2.\n");
}

TEST_F(TemplatesTest, WritesTheLegendsFrameWithoutInvocations) {
  EXPECT_EQ(rewritten({"a."}).legend,
            "% BEGIN LEGENDA OF TEMPLATE INVOCATIONS\n% END OF LEGENDA\n");
}

}    // namespace
}    // namespace zarel
