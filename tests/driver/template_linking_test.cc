// template_linking_test.cc - what invocations become with -linktemplates.

#include "templates_fixture.h"

namespace zarel {
namespace {

class LinkedExpansion : public TemplatesTable {};

TEST_P(LinkedExpansion, ReadsTheProgram) {
  expect_rewriting(kLinked);
}

constexpr Rewriting kCases[] = {
    {"reads_strongly_negated_and_bare_actuals",
     "#template t{f(1),g(0),k(0)}(1) { t(X) :- f(X), g, k. } a(X) :- t{-p(*),q,-r}(X).",
     "a_2(a,default,X) :- t_0(X). p_1(Var0) :- -a_2(p,default,Var0). q_2 :- a_1(q,default). r_3 "
     ":- -a_1(r,default). t_0(X) :- p_1(X), q_2, r_3.",
     "p_1(Var0) : -p(*), q, -r; q_2 : -p(*), q, -r; r_3 : -p(*), q, -r; t_0(X) : t[-p(*), q, -r] "
     "(X)"},
    {"frame_spaces_are_told_apart",
     COPY "a(X) :- t{p(*,$)}(X). @m. a(X) :- t{p(*,$)}(X). @. b(X) :- t{p(*,$)}(X).",
     "a_2(a,default,X) :- t_2(X). a_2(a,m,X) :- t_0(X). a_2(b,default,X) :- t_2(X). p_1(Var0) :- "
     "a_3(p,m,Var0,_). t_0(X) :- p_1(X). p_3(Var0) :- a_3(p,default,Var0,_). t_2(X) :- p_3(X)."},
    {"globals_belong_to_their_definition",
     "#template t{f(1)}(1) GLOBAL g { t(X) :- f(X), g(X). } #template u{g(1)}(1) { u(X) :- g(X). "
     "} #template w{f(1)}(1) { g(X) :- f(X). w(X) :- g(X). } a(X) :- u{p(*)}(X), w{p(*)}(X).",
     "a_2(a,default,X) :- u_2(X), w_0(X). p_1(Var0) :- a_2(p,default,Var0). g_0(X) :- p_1(X). "
     "w_0(X) :- g_0(X). p_3(Var0) :- a_2(p,default,Var0). u_2(X) :- p_3(X)."},
    {"formal_atoms_without_arguments_keep_group_by_terms",
     "#template t{f(0)}(1) { t(X) :- f, h(X). :~ h(X). } a(X) :- t{p(X)}(X).",
     "a_2(a,default,X) :- t_0(X,X). p_1(Group0) :- a_2(p,default,Group0). t_0(Group0,X) :- "
     "p_1(Group0), h_0(Group0,X). :~ h_0(Group0,X), p_1(Group0). "},
    {"each_actual_keeps_its_pattern",
     "#template t{f(1),g(1)}(1) { t(X) :- f(X), g(X). } a(X,D) :- t{p(*,D),p(D,*)}(X).",
     "a_3(a,default,X,D) :- t_0(D,D,X). p_1(Var0,Group0) :- a_3(p,default,Var0,Group0). "
     "p_2(Group1,Var0) :- a_3(p,default,Group1,Var0). t_0(Group0,Group1,X) :- p_1(X,Group0), "
     "p_2(Group1,X)."},
    {"fresh_variables_are_like_no_other",
     "#template t{f(2)}(1) { t(Var0) :- f(Var0,Group0). } a(X,D,Group1) :- t{p(*,*,D)}(X).",
     "a_4(a,default,X,D,Group1) :- t_0(D,X). p_1(Var0_,Var1,Group0_) :- "
     "a_4(p,default,Var0_,Var1,Group0_). t_0(Group0_,Var0) :- p_1(Var0,Group0,Group0_).",
     "p_1(Var0_,Var1,Group0_) : p(*,*,D); t_0(D,X) : t[p(*,*,D)] (X)"},
    {"fresh_variables_behind_a_query",
     T_OF_F "t(X) :- f(X), h(Y,Z). } p(X,Y,Z)? a(X) :- t{p(X,*)}(X).",
     "a_2(a,default,X) :- t_0(X,X). p_1(Group0,Var0) :- a_3(p,default,Group0,Var0). t_0(Group0,X) "
     ":- p_1(Group0,X), h_0(Group0,Y,Z). a_4(p,default,X,Y,Z)?"},
    {"no_generated_name_is_a_generic_one",
     "#template a{f(1)}(1) { a(X) :- f(X), -a(X). } b(X) :- a{a(*)}(X), a{\"A b\"(*)}(X), "
     "a{X(*)}(X).",
     "a_2(b,default,X) :- relation_4(X), relation_2(X), relation_0(X). relation_1(Var0) :- "
     "a_2(X,default,Var0). relation_0(X) :- relation_1(X), -relation_0(X). relation_3(Var0) :- "
     "a_2(\"A b\",default,Var0). relation_2(X) :- relation_3(X), -relation_2(X). relation_5(Var0) "
     ":- a_2(a,default,Var0). relation_4(X) :- relation_5(X), -relation_4(X).",
     "relation_1(Var0) : X(*); relation_0(X) : a[X(*)] (X); relation_3(Var0) : \"A b\"(*); "
     "relation_2(X) : a[\"A b\"(*)] (X); relation_5(Var0) : a(*); relation_4(X) : a[a(*)] (X)"},
    {"polarities_are_told_apart_and_names_free_under_minus_too",
     T_OF_F "-p(X) :- f(X). t(X) :- -p(X). } a(X) :- t{p(*)}(X), t{-p(*)}(X).",
     "a_2(a,default,X) :- t_2(X), t_0(X). p_1(Var0) :- -a_2(p,default,Var0). -p_0(X) :- p_1(X). "
     "t_0(X) :- -p_0(X). p_3(Var0) :- a_2(p,default,Var0). -p_2(X) :- p_3(X). t_2(X) :- -p_2(X)."},
    {"the_word_v_is_a_term_of_an_invocation", COPY "a :- t{v(v,*)}(v).",
     "a_1(a,default) :- t_0(v,v). v_1(Group0,Var0) :- a_3(v,default,Group0,Var0). t_0(Group0,X) :- "
     "v_1(Group0,X).",
     "v_1(Group0,Var0) : v(v,*); t_0(v,v) : t[v(v,*)] (v)"},
    {"negated_formal_predicates_read_the_opposite",
     "#template t{f(1),g(0)}(1) { t(X) :- -f(X), not -f(b), -g, g. t(X) :- t{-f(*),-g}(X). } a(X) "
     ":- t{p(D,*),-q}(X).",
     "a_2(a,default,X) :- t_0(D,X). p_1(Group0,Var0) :- a_3(p,default,Group0,Var0). q_2 :- "
     "-a_1(q,default). minus_p_0(Group0,Var0) :- -a_3(p,default,Group0,Var0). minus_q_0 :- "
     "a_1(q,default). t_0(Group0,X) :- minus_p_0(Group0,X), minus_q_0, q_2, p_1(Group0,_), not "
     "minus_p_0(Group0,b). t_0(Group0,X) :- t_3(Group0,X), p_1(Group0,_). p_4(Group0,Var0) :- "
     "-a_3(p,default,Group0,Var0). q_5 :- a_1(q,default). minus_p_1(Group0,Var0) :- "
     "a_3(p,default,Group0,Var0). minus_q_1 :- -a_1(q,default). t_3(Group0,X) :- "
     "minus_p_1(Group0,X), minus_q_1, q_5, p_4(Group0,_), not minus_p_1(Group0,b). t_3(Group0,X) "
     ":- t_0(Group0,X), p_4(Group0,_)."},
    {"negated_formal_predicates_of_projections_and_local_ones",
     "#template t{f(2)}(1) { h(X) :- f(X,X). t(X) :- u{-f(*,$)}(X), u{h(*)}(X). } #template "
     "u{f(1)}(1) { u(X) :- -f(X). } a(X) :- t{p(*,*)}(X).",
     "a_2(a,default,X) :- t_0(X). p_1(Var0,Var1) :- a_3(p,default,Var0,Var1). h_0(X) :- p_1(X,X). "
     "minus_p_0(Var0,Var1) :- -a_3(p,default,Var0,Var1). t_0(X) :- u_4(X), u_2(X). h_0_3(Var0) :- "
     "h_0(Var0). minus_h_0_0(Var0) :- -h_0(Var0). u_2(X) :- minus_h_0_0(X). minus_p_0_5(Var0) :- "
     "minus_p_0(Var0,_). minus_minus_p_0_0(Var0) :- p_1(Var0,_). u_4(X) :- minus_minus_p_0_0(X)."},
    {"recursion_over_a_local_predicate_handed_on_closes",
     T_OF_F "h(X) :- f(X). t(X) :- u{h(*)}(X). } #template u{f(1)}(1) { u(X) :- f(X). u(X) :- "
            "u{f(*)}(X). } a(X,D) :- t{p(*,D)}(X).",
     "a_3(a,default,X,D) :- t_0(D,X). p_1(Var0,Group0) :- a_3(p,default,Var0,Group0). "
     "h_0(Group0,X) :- p_1(X,Group0). t_0(Group0,X) :- u_2(Group0,X), p_1(_,Group0). "
     "h_0_3(Group0,Var0) :- h_0(Group0,Var0). u_2(Group0,X) :- h_0_3(Group0,X). u_2(Group0,X) :- "
     "u_2(Group0,X), h_0_3(Group0,_).",
     "p_1(Var0,Group0) : p(*,D); t_0(D,X) : t[p(*,D)] (X); h_0_3(Group0,Var0) : h_0(Group0,*); "
     "u_2(Group0,X) : u[h_0(Group0,*)] (X); u_2(Group0,X) : u[h_0(Group0,*)] (X)"},
    {"local_predicates_are_handed_on_for_each_expansion",
     T_OF_F "h(X) :- f(X). t(X) :- u{h(*)}(X). } #template u{f(1)}(1) { u(X) :- f(X). } a(X) :- "
            "t{p(*)}(X), t{q(*)}(X).",
     "a_2(a,default,X) :- t_4(X), t_0(X). q_1(Var0) :- a_2(q,default,Var0). h_0(X) :- q_1(X). "
     "t_0(X) :- u_2(X). h_0_3(Var0) :- h_0(Var0). u_2(X) :- h_0_3(X). p_5(Var0) :- "
     "a_2(p,default,Var0). h_1(X) :- p_5(X). t_4(X) :- u_6(X). h_1_7(Var0) :- h_1(Var0). u_6(X) "
     ":- h_1_7(X)."},
    {"a_formal_predicate_handed_on_in_part",
     "#template t{f(2)}(1) { t(X) :- u{f(*,$)}(X), u{f(*,X)}(X). } #template u{f(1)}(1) { u(X) :- "
     "f(X). } a(X,D) :- t{p(*,*,D)}(X).",
     "a_3(a,default,X,D) :- t_0(D,X). p_1(Var0,Var1,Group0) :- a_4(p,default,Var0,Var1,Group0). "
     "t_0(Group0,X) :- u_4(Group0,X), u_2(X,Group0,X), p_1(_,_,Group0). p_1_3(Var0,Group0,Group1) "
     ":- p_1(Var0,Group0,Group1). u_2(Group0,Group1,X) :- p_1_3(X,Group0,Group1). "
     "p_1_5(Var0,Group0) :- p_1(Var0,_,Group0). u_4(Group0,X) :- p_1_5(X,Group0).",
     "p_1(Var0,Var1,Group0) : p(*,*,D); t_0(D,X) : t[p(*,*,D)] (X); p_1_3(Var0,Group0,Group1) : "
     "p_1(*,X,Group0); u_2(X,Group0,X) : u[p_1(*,X,Group0)] (X); p_1_5(Var0,Group0) : "
     "p_1(*,$,Group0); u_4(Group0,X) : u[p_1(*,$,Group0)] (X)"},
    {"a_pending_expansion_is_made_once",
     COPY "#template u{f(1)}(1) { u(X) :- t{f(*)}(X). } a(X) :- t{p(*)}(X). a(X) :- u{p(*)}(X).",
     "a_2(a,default,X) :- t_2(X). a_2(a,default,X) :- u_0(X). p_1(Var0) :- a_2(p,default,Var0). "
     "u_0(X) :- t_2(X). p_3(Var0) :- a_2(p,default,Var0). t_2(X) :- p_3(X).",
     "p_1(Var0) : p(*); u_0(X) : u[p(*)] (X); p_3(Var0) : p(*); t_2(X) : t[p(*)] (X); t_2(X) : "
     "t[p(*)] (X)"},
    {"nested_globals_are_bridged",
     "#template t{f(1)}(1) GLOBAL g { t(X) :- u{g(*,$,b)}(X), f(X). } #template u{f(1)}(1) { u(X) "
     ":- f(X). } a(X,D) :- t{p(*,D)}(X).",
     "a_3(a,default,X,D) :- t_0(D,X). p_1(Var0,Group0) :- a_3(p,default,Var0,Group0). "
     "g_0(Group0,Var0,Var1,b) :- a_4(g,default,Var0,Var1,b), p_1(_,Group0). "
     "-g_0(Group0,Var0,Var1,b) :- -a_4(g,default,Var0,Var1,b), p_1(_,Group0). t_0(Group0,X) :- "
     "u_2(Group0,b,X), p_1(X,Group0). g_0_3(Group0,Var0,Group1) :- g_0(Group0,Var0,_,Group1). "
     "u_2(Group0,Group1,X) :- g_0_3(Group0,X,Group1).",
     "p_1(Var0,Group0) : p(*,D); t_0(D,X) : t[p(*,D)] (X); g_0_3(Group0,Var0,Group1) : "
     "g_0(Group0,*,$,b); u_2(Group0,b,X) : u[g_0(Group0,*,$,b)] (X)"},
};
INSTANTIATE_TEST_SUITE_P(Cases, LinkedExpansion, testing::ValuesIn(kCases), case_name);

}    // namespace
}    // namespace zarel
