// grammar.y - the solver's output: answer sets, lists of terms, best models.

%require "3.8"
%define api.pure full
%define api.prefix {output_yy}
%define api.token.prefix {TOKEN_}
%define api.value.type {zarel::TextRange}
%param {void* scanner}
%parse-param {zarel::AnswerEvents& events} {zarel::ParserStacks& stacks}

%code requires {
#include "base/parser_stacks.h"
#include "output/answer_events.h"
}

%code {
#include "output/output_scanner.h"

// The deepest stack. A nested function term takes two to four entries of it, so terms nested two
// million deep are read, deeper ones are refused with "memory exhausted".
#define YYMAXDEPTH 8000000
#define YYMALLOC stacks.allocate
#define YYFREE stacks.release

int output_yylex(OUTPUT_YYSTYPE* value, void* scanner);
zarel::outputScanner* output_yyget_extra(void* scanner);
static void output_yyerror(void* scanner, zarel::AnswerEvents& events, zarel::ParserStacks&,
                           const char* message) {
  events.flush();
  zarel::output_yyerror(message, output_yyget_extra(scanner)->place());
}
}

%token WORD 258 QUOTED 259 CAPITAL 260
%token LINE_END 261
%token COMMA 262 ","  OPEN 263 "("  CLOSE 264 ")"
%token OPEN_BRACKET 265 "["  CLOSE_BRACKET 266 "]"
%token OPEN_BRACE 267 "{"  CLOSE_BRACE 268 "}"
%token MINUS 269 "-"  COLON 270 ":"  LESS 271 "<"  GREATER 272 ">"
%token FLAT_ATOM 273    // a WORD with its terms in parentheses. See Note [flat atoms].

%%

start
  : items
  ;
items
  : %empty
  | items item
  ;
item
  : answer_set  { events.finish_answer_set(); }
  | terms       { events.row($1); }
  | title subject ":" answer_set
    CAPITAL[cost] "(" "[" CAPITAL[weight_name] ":" CAPITAL[level_name] "]" ")" ":"
    "<" "[" WORD[weight] ":" WORD[level] "]" ">"
    { events.finish_best_model({$cost, $weight_name, $level_name, $weight, $level}); }
  ;
title
  : CAPITAL  { events.set_title($1); }
  ;
subject
  : WORD  { events.set_subject($1); }
  ;
answer_set
  : open_brace "}"        { events.end_answer_set(); }
  | open_brace atoms "}"  { events.end_answer_set(); }
  ;
open_brace
  : "{"  { events.begin_answer_set(); }
  ;
atoms
  : signed_atom
  | atoms ","[comma] signed_atom  { events.drop_comma($comma); }
  ;
signed_atom
  : atom
  | "-" { events.set_negative_atom(true); } atom  { events.set_negative_atom(false); }
  ;
atom
  : WORD[word] "(" first[relation] "," second[space] ")"[close]
    { events.short_atom($word, $relation, $space, $close); }
  | WORD[word] "(" first[relation] "," second[space] "," terms[arguments] ")"[close]
    { events.atom({$word, $relation, $space, $arguments, $close}); }
  | FLAT_ATOM
    { events.flat_atom($1); }
  ;
// A phrase of several tokens is one range from the first to the last, for their texts stand side by
// side.
terms
  : term
  | terms[front] "," term[last]  { $$ = {$front.begin, $last.end}; }
  ;
term
  : WORD
  | QUOTED
  | function_term
  ;
function_term
  : WORD[name] "(" terms ")"[close]  { $$ = {$name.begin, $close.end}; }
  | FLAT_ATOM
  ;
first
  : WORD
  | QUOTED
  | function_term
  ;
second
  : WORD
  | QUOTED
  | function_term
  ;
