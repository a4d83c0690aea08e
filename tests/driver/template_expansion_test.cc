// template_expansion_test.cc - what invocations become without options.

#include "templates_fixture.h"

namespace zarel {
namespace {

class PlainExpansion : public TemplatesTable {};

TEST_P(PlainExpansion, BecomesPlainRules) {
  expect_rewriting(kPlain);
}

constexpr Rewriting kCases[] = {
    {"what_nothing_invokes_is_not_checked", T_OF_F "f(X,X). } a.", "a_1(a,default)."},
    {"outputs_of_every_kind_and_actuals_named_as_operators",
     "#template t{f(1)}(4) { t(X,Y,Y,X) :- f(X), f(Y). } a(X) :- t{v(*)}(_,b,1,X). #template "
     "u{f(1)}(0) { u :- f(X). } a(X) :- u{v(*)}().",
     "a_2(a,default,X) :- t_2(_,b,1,X). a_2(a,default,X) :- u_0. v_1(Var0) :- a_1(Var0,v). u_0 :- "
     "v_1(X). v_3(Var0) :- a_1(Var0,v). t_2(X,Y,Y,X) :- v_3(X), v_3(Y)."},
    {"only_the_first_result_of_a_head_counts", T_OF_F "t(X) v t(X,X) :- f(X)." USE,
     "a_2(a,default,X) :- t_0(X). p_1(Var0) :- a_1(Var0,p). t_0(X) v t_0(X,X) :- p_1(X)."},
    {"groups_by_ordinary_terms", COPY "a(X) :- t{p(X,a,*)}(X).",
     "a_2(a,default,X) :- t_0(X,a,X). p_1(X0,C_const_1,Var0) :- a_3(X0,C_const_1,Var0,p). "
     "t_0(X0,C_const_1,X) :- p_1(X0,C_const_1,X).",
     "p_1(X0,C_const_1,Var0) : p(X,a,*); t_0(X,a,X) : t[p(X,a,*)] (X)"},
    {"one_expansion_for_one_signature",
     COPY "a(X,D) :- t{p(D,*)}(X), not t{p(E,*)}(D). :- t{p(a,*)}(b). :~ t{p(1,*)}(b).",
     "a_3(a,default,X,D) :- t_0(D,X), not t_0(E,D). :- t_0(a,b). :~ t_0(1,b).  p_1(D0,Var0) :- "
     "a_2(D0,Var0,p). t_0(D0,X) :- p_1(D0,X).",
     "p_1(D0,Var0) : p(D,*); t_0(D,X) : t[p(D,*)] (X); t_0(E,D) : t[p(E,*)] (D); t_0(a,b) : "
     "t[p(a,*)] (b); t_0(1,b) : t[p(1,*)] (b)"},
    {"skips_a_name_that_is_taken", COPY "a(X) :- t{t_0(*)}(X).",
     "a_2(a,default,X) :- t_1(X). t_0_2(Var0) :- a_1(Var0,t_0). t_1(X) :- t_0_2(X)."},
    {"an_atom_without_arguments_loses_group_by_terms",
     "#template t{f(0)}(1) { t(X) :- f, h(X). } a(X) :- t{p(X)}(X).",
     "a_2(a,default,X) :- t_0(X,X). p_1(X0) :- a_1(X0,p). t_0(X0,X) :- p_1, h_0(X0,X)."},
    {"local_predicates_are_named_once_in_an_expansion",
     T_OF_F "h(X) :- f(X). t(X) :- h(X). -h(X) :- t(X). } a(X) :- t{p(*)}(X), t{q(*)}(X).",
     "a_2(a,default,X) :- t_2(X), t_0(X). q_1(Var0) :- a_1(Var0,q). h_0(X) :- q_1(X). t_0(X) :- "
     "h_0(X). -h_0(X) :- t_0(X). p_3(Var0) :- a_1(Var0,p). h_1(X) :- p_3(X). t_2(X) :- h_1(X). "
     "-h_1(X) :- t_2(X)."},
    {"strong_negation_stays_on_local_and_result_atoms",
     T_OF_F "t(X) :- -f(X), -h(X), not -t(X). } a(X) :- t{p(*,D)}(X).",
     "a_2(a,default,X) :- t_0(D,X). p_1(Var0,D0) :- a_2(Var0,D0,p). t_0(D0,X) :- p_1(X,D0), "
     "-h_0(D0,X), not -t_0(D0,X)."},
    {"actuals_without_parameters",
     "#template t{f(0),k(0)}(1) { t(X) :- f, k, h(X). } a(X) :- t{p,-q}(X).",
     "a_2(a,default,X) :- t_0(X). p_1 :- a_0(p). -q_2 :- a_0(-q). t_0(X) :- p_1, -q_2, h_0(X).",
     "p_1 : p, -q; -q_2 : p, -q; t_0(X) : t[p, -q] (X)"},
    {"bridges_global_predicates",
     "#template t{f(1)}(1) GLOBAL g { t(X) :- f(X), g(X), not -g(X)." USE,
     "a_2(a,default,X) :- t_0(X). p_1(Var0) :- a_1(Var0,p). g_0(X) :- g(X). -g_0(X) :- not g(X). "
     "t_0(X) :- p_1(X), g_0(X), not -g_0(X)."},
    {"globals_keep_their_local_names_among_others",
     "#template t{f(1)}(1) GLOBAL g, i { t(X) :- f(X), g(X), i(X), h(X), not g(b)." USE,
     "a_2(a,default,X) :- t_0(X). p_1(Var0) :- a_1(Var0,p). g_0(X) :- g(X). i_0(X) :- i(X). g_0(b) "
     ":- g(b). t_0(X) :- p_1(X), g_0(X), i_0(X), h_0(X), not g_0(b)."},
    {"bridges_carry_group_by_terms",
     "#template t{f(1),k(1)}(1) GLOBAL g { t(X) :- f(X), k(X), g(X,b). } a(X,D) :- "
     "t{p(*,D),q(*)}(X).",
     "a_3(a,default,X,D) :- t_0(D,X). p_1(Var0,D0) :- a_2(Var0,D0,p). q_2(Var0) :- a_1(Var0,q). "
     "g_0(D0,X,b) :- g(X,b), p_1(_,D0), q_2(_). t_0(D0,X) :- p_1(X,D0), q_2(X), g_0(D0,X,b)."},
    {"safety_literals_are_dropped_by_name_up_to_the_underscore",
     T_OF_F "t(X) :- p(X). t(X) :- p_y(X). t(X) :- q(X). } a(X,D) :- t{p_z(*,D)}(X).",
     "a_3(a,default,X,D) :- t_0(D,X). p_z_1(Var0,D0) :- a_2(Var0,D0,p_z). t_0(D0,X) :- p_0(D0,X). "
     "t_0(D0,X) :- p_y_0(D0,X). t_0(D0,X) :- q_0(D0,X), p(_,D0)."},
    {"safety_literals_of_a_weak_constraint",
     "#template t{f(1),k(1)}(1) { t(X) :- f(X), k(X). :~ m. } a(X) :- t{p(*,X),p(b,*)}(X).",
     "a_2(a,default,X) :- t_0(X,b,X). p_1(Var0,X0) :- a_2(Var0,X0,p). p_2(C_const_1,Var0) :- "
     "a_2(C_const_1,Var0,p). t_0(X0,C_const_1,X) :- p_1(X,X0), p_2(X,X0). :~ m_0(X0,C_const_1), "
     "p(_,X0), p(C_const_1,_). "},
    {"a_body_of_aggregates_gets_no_safety_literals",
     T_OF_F "t(X) :- X = #count{Y:f(Y), not h(Y)}. } a(X,D) :- t{p(*,D)}(X).",
     "a_3(a,default,X,D) :- t_0(D,X). p_1(Var0,D0) :- a_2(Var0,D0,p). t_0(D0,X) :- X = "
     "#count{Y:p_1(Y,D0), not h_0(D0,Y)}."},
    {"every_kind_of_literal_is_copied",
     T_OF_F "h(1..3). t(g(X)) v k(X) :- f(X), X < 3, Y = X + 1, h(Y), #int(Y), &e[X]." USE,
     "a_2(a,default,X) :- t_0(X). p_1(Var0) :- a_1(Var0,p). h_0(Var0) :- #int(Var0), >=(Var0,1), "
     "<=(Var0,3). t_0(F_g_0) v k_0(X) :- p_1(X), <(X,3), +(X,1,Y), h_0(Y), #int(Y), &e[X](), "
     "#function_builtin(F_g_0,g,X)."},
    {"clauses_of_one_frame_share_an_aggregate",
     COPY "o[a->X, b->X] :- q(X), 1 < #count{Y: t{p(*,X)}(Y), not t{p(*,1)}(Y)}.",
     "a_5(valueOf,defaultFlogic,o,a,X,\"->\") :- a_2(q,default,X), 1 < #count{Y:t_0(X,Y), not "
     "t_0(1,Y)}. a_5(valueOf,defaultFlogic,o,b,X,\"->\") :- a_2(q,default,X), 1 < "
     "#count{Y:t_0(X,Y), not t_0(1,Y)}. p_1(Var0,X0) :- a_2(Var0,X0,p). t_0(X0,X) :- p_1(X,X0).",
     "p_1(Var0,X0) : p(*,X); t_0(X,Y) : t[p(*,X)] (Y); t_0(1,Y) : t[p(*,1)] (Y)"},
    {"frames_become_local_predicates", T_OF_F "t(X) :- f(X), o[a->X]. o[b->X] :- f(X)." USE,
     "a_2(a,default,X) :- t_0(X). p_1(Var0) :- a_1(Var0,p). t_0(X) :- p_1(X), a_0(o,default,X). "
     "b_0(o,default,X) :- p_1(X)."},
    {"nested_in_an_aggregate",
     T_OF_F "t(X) :- X = #count{Y:u{f(*)}(Y)}, f(X). } #template u{f(1)}(1) { u(X) :- f(X)." USE,
     "a_2(a,default,X) :- t_0(X). p_1(Var0) :- a_1(Var0,p). t_0(X) :- X = #count{Y:u_2(Y)}, "
     "p_1(X). p_1_3(Var0) :- a_1(Var0,p_1). u_2(X) :- p_1_3(X)."},
    {"results_and_globals_handed_on_have_local_names",
     "#template t{f(1)}(1) GLOBAL g { t(X) :- f(X). t(X) :- u{t(*),g(*)}(X). } #template "
     "u{f(1),k(1)}(1) { u(X) :- f(X), k(X)." USE,
     "a_2(a,default,X) :- t_0(X). p_1(Var0) :- a_1(Var0,p). t_0(X) :- p_1(X). t_0(X) :- u_2(X). "
     "t_0_3(Var0) :- a_1(Var0,t_0). g_0_4(Var0) :- a_1(Var0,g_0). u_2(X) :- t_0_3(X), g_0_4(X)."},
    {"a_signature_met_again_is_expanded_again",
     COPY "#template u{f(1)}(1) { u(X) :- t{f(*)}(X). } a(X) :- t{p(*)}(X). a(X) :- u{p(*)}(X).",
     "a_2(a,default,X) :- t_2(X). a_2(a,default,X) :- u_0(X). p_1(Var0) :- a_1(Var0,p). u_0(X) :- "
     "t_2(X). p_3(Var0) :- a_1(Var0,p). t_2(X) :- p_3(X). p_5(Var0) :- a_1(Var0,p). t_4(X) :- "
     "p_5(X).",
     "p_1(Var0) : p(*); u_0(X) : u[p(*)] (X); p_3(Var0) : p(*); t_2(X) : t[p(*)] (X); t_2(X) : "
     "t[p_1(*)] (X); p_5(Var0) : p(*); t_4(X) : t[p(*)] (X); t_4(X) : t[p_1(*)] (X)"},
    {"places_run_over_taken_variables",
     "#template t{f(2)}(1) { t(X) :- f(X,X). } a(Var) :- t{p(Var,*,*)}(Var).",
     "a_2(a,default,Var) :- t_0(Var,Var). p_1(Var0,Var1,Var1) :- a_3(Var0,Var1,Var1,p). "
     "t_0(Var0,X) :- p_1(Var0,X,X)."},
    {"fresh_names_meet_by_chance", T_OF_F "t(D0) :- f(D0). } a(X,D) :- t{p(*,D)}(X).",
     "a_3(a,default,X,D) :- t_0(D,X). p_1(Var0,D0) :- a_2(Var0,D0,p). t_0(D0,D0) :- p_1(D0,D0)."},
    {"two_actuals_of_one_predicate_share_a_pattern",
     "#template t{f(1),g(1)}(1) { t(X) :- f(X), g(X). } a(X,D) :- t{p(*,D),p(D,*)}(X).",
     "a_3(a,default,X,D) :- t_0(D,D,X). p_1(Var0,D0) :- a_2(Var0,D0,p). p_2(D1,Var0) :- "
     "a_2(D1,Var0,p). t_0(D0,D1,X) :- p_1(X,D0), p_2(X,D0).",
     "p_1(Var0,D0) : p(*,D), p(D,*); p_2(D1,Var0) : p(*,D), p(D,*); t_0(D,D,X) : t[p(*,D), "
     "p(D,*)] (X)"},
    {"strings_of_several_lines_stay_in_the_comments", COPY "a :- t{p(*)}(\"x\ny.\n\").",
     "a_1(a,default) :- t_0(\"x y. \"). p_1(Var0) :- a_1(Var0,p). t_0(X) :- p_1(X).",
     "p_1(Var0) : p(*); t_0(\"x\n% y.\n% \") : t[p(*)] (\"x\n% y.\n% \")"},
};
INSTANTIATE_TEST_SUITE_P(Cases, PlainExpansion, testing::ValuesIn(kCases), case_name);

TEST_F(RewriteTest, EndsAtAGlobalPredicateOfAnotherArity) {
  const RewrittenProgram result =
      rewritten({"#template t{f(1)}(1) GLOBAL g { t(X) :- f(X), g(X), not g(X,X)." USE});
  EXPECT_EQ(result.status, 1);
  EXPECT_EQ(result.messages,
            "g is a global predicate first used with arity 1, now seen with arity 2.\n");
}

}    // namespace
}    // namespace zarel
