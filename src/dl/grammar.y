/* grammar.y - statements of the solver's language. Every action is one call of the builder. */
%require "3.8"
%define api.pure full
%define api.prefix {dl_}
%define parse.error detailed
%param {void* scanner}
%parse-param {dl::StatementBuilder* build}

%code requires {
#include "dl/token.h"
namespace dl { class StatementBuilder; }
}
%union {
  dl::Token token;
  unsigned index;    /* of a term, which the builder owns */
  dl::Operator op;   /* of a builtin */
}
%code {
#include "dl/statement_builder.h"
#define YYMAXDEPTH 200000
int dl_lex(DL_STYPE* value, void* scanner);
char* dl_get_text(void* scanner);
int dl_get_leng(void* scanner);
static void dl_error(void* scanner, dl::StatementBuilder* build, const char* message) {
  build->syntax_error(message, {dl_get_text(scanner), std::size_t(dl_get_leng(scanner))});
}
}

%token END 0 "end of file"
%token <token> NAME "name" VARIABLE "variable" STRING "string" NUMBER "number"
%token <token> NUMBERED_NAME "numbered name" FLAT_COMPOUND "atom"
%token <token> ANONYMOUS "_" OR_WORD "v" NOT "not" IMPLIES ":-" WEAK ":~"
%token <token> INCLUDE "#include" MAXINT "#maxint"
%token <token> EQUAL "==" UNEQUAL "!=" LESS_EQUAL "<=" GREATER_EQUAL ">="
%token <token> INTEGERS "#int" SUCC "#succ" FUNCTION_BUILTIN "#function_builtin"
%token <token> AGGREGATE "aggregate function"
/* in the order in which messages list them */
%token <token> '.' '[' ':' ']' '?' '=' '|' ';' ',' '+' '*' ')' '<' '>' '(' '}' '{' '-'

%type <token> measure opening_name
%type <index> term operand compound atom signed_atom bare
%type <op> comparison arithmetic builtin_open

%%

program
  : %empty
  | program statement
  ;

statement
  : head '.'[e]                                         { build->fact($e); }
  | head IMPLIES body '.'[e]                            { build->rule($e); }
  | constraint_mark body '.'[e]                         { build->constraint($e); }
  | weak_mark body '.'[e]                               { build->weak_constraint({}, {}, $e, $e); }
  | weak_mark body '.'[d] '[' measure[w] ':' measure[l] ']'[e]
                                        { build->weak_constraint($w, $l, $d, $e); }
  | body '?'[e]                                         { build->query($e); }
  | MAXINT '=' NUMBER[n] '.'                            { build->integer_bound($n); }
  | INCLUDE[i]                                          { build->include($i); }
  ;

constraint_mark
  : IMPLIES[m]                                          { build->begin($m); }
  ;

weak_mark
  : WEAK[m]                                             { build->begin_weak($m); }
  ;

measure
  : %empty                                              { $$ = {}; }
  | NUMBER
  | VARIABLE
  ;

head
  : signed_atom[a]                                      { build->head($a); }
  | head or signed_atom[a]                              { build->head($a); }
  ;

or: OR_WORD | '|' | ';' ;

body
  : literal
  | body ',' literal
  ;

literal
  : item
  | negation item
  ;

negation
  : NOT[n]                                              { build->negation($n); }
  ;

item
  : signed_atom[a]                                      { build->atom_literal($a); }
  | term[l] comparison[op] term[r]                      { build->comparison($op, $l, $r); }
  | operand[l] '=' term[r]                              { build->equality($l, $r); }
  | operand[z] '=' term[x] '+' term[y]                  { build->sum($x, $y, $z); }
  | operand[z] '=' term[x] '*' term[y]                  { build->product($x, $y, $z); }
  | builtin_open[b] arguments ')'                       { build->builtin($b); }
  | operand[t] '=' aggregate                            { build->equal_to_aggregate($t); }
  | term[t] comparison[op] aggregate                    { build->left_guard($op, $t); }
  | aggregate '=' term[t]                               { build->equal_to_aggregate($t); }
  | aggregate comparison[op] term[t]                    { build->right_guard($op, $t); }
  | term[l] comparison[a] aggregate comparison[b] term[r]
                                        { build->two_guards({$a, $l}, {$b, $r}); }
  | no_guard
  ;

no_guard
  : '='[o] aggregate                                    { build->missing_guard($o.view()); }
  | comparison[o] aggregate                             { build->missing_guard($o.view()); }
  | aggregate '='[o]                                    { build->missing_guard($o.view()); }
  | aggregate comparison[o]                             { build->missing_guard($o.view()); }
  | term comparison aggregate comparison[o]             { build->missing_guard($o.view()); }
  ;

comparison
  : EQUAL[t]                    { $$ = dl::operator_of($t, dl::kEqual); }
  | UNEQUAL[t]                  { $$ = dl::operator_of($t, dl::kUnequal); }
  | '<'[t]                      { $$ = dl::operator_of($t, dl::kLess); }
  | '>'[t]                      { $$ = dl::operator_of($t, dl::kGreater); }
  | LESS_EQUAL[t]               { $$ = dl::operator_of($t, dl::kLessEqual); }
  | GREATER_EQUAL[t]            { $$ = dl::operator_of($t, dl::kGreaterEqual); }
  ;

arithmetic
  : '+'[t]                      { $$ = dl::operator_of($t, dl::kSum); }
  | '*'[t]                      { $$ = dl::operator_of($t, dl::kProduct); }
  | INTEGERS[t]                 { $$ = dl::operator_of($t, dl::kInt); }
  | SUCC[t]                     { $$ = dl::operator_of($t, dl::kSuccessor); }
  | FUNCTION_BUILTIN[t]         { $$ = dl::operator_of($t, dl::kFunctionTerm); }
  ;

builtin_open
  : comparison[b] '('                                   { build->open_builtin($$ = $b); }
  | arithmetic[b] '('                                   { build->open_builtin($$ = $b); }
  ;

aggregate
  : aggregate_open arguments aggregate_colon body '}'[e]
                                                        { build->close_aggregate($e); }
  ;

aggregate_open
  : AGGREGATE[f] '{'                                    { build->open_aggregate($f); }
  ;

aggregate_colon
  : ':'                                                 { build->aggregate_body(); }
  ;

signed_atom
  : atom
  | sign atom[a]                                        { $$ = build->strongly_negated($a); }
  ;

sign
  : '-'[s]                                              { build->sign($s); }
  ;

atom
  : compound
  | bare
  | NUMBERED_NAME[n]                                    { $$ = build->constant($n); }
  | VARIABLE[n]                                         { $$ = build->constant($n); }
  ;

term
  : operand
  | MAXINT[m]                                           { $$ = build->bound_term($m); }
  ;

/* what may stand before a single "=": a statement may begin with it, and one that begins with
   "#maxint =" is the directive */
operand
  : compound
  | bare
  | VARIABLE[v]                                         { $$ = build->variable($v); }
  | STRING[s]                                           { $$ = build->string($s); }
  | NUMBER[n]                                           { $$ = build->number($n); }
  | ANONYMOUS[a]                                        { $$ = build->anonymous($a); }
  ;

bare
  : NAME[n]                                             { $$ = build->constant($n); }
  ;

compound
  : open arguments ')'                                  { $$ = build->close_compound(); }
  | FLAT_COMPOUND[c]                                    { $$ = build->flat_compound($c); }
  ;

open
  : opening_name[n] '('                                 { build->open_compound($n); }
  ;

opening_name: NAME | VARIABLE | OR_WORD | NOT | NUMBERED_NAME ;

arguments
  : argument
  | arguments ',' argument
  ;

argument
  : term[t]                                             { build->argument($t); }
  | OR_WORD[v]                                          { build->argument(build->constant($v)); }
  | NOT[n]                                              { build->argument(build->constant($n)); }
  ;

%%
