/* The grammar of the input language. An action is one call of the builder, which owns what the values refer to. */
%require "3.8"
%define parse.error simple
%locations
%define api.pure full
%define api.location.type {zarel::SourceRange}
%define lr.type ielr
%param {void* scanner}
%parse-param {zarel::ParserStacks& stacks} {zarel::ProgramBuilder& build}
%initial-action { @$ = {1, 1, 1, 1}; build.follow(yyloc); }
%expect 0

%code requires {
#include "base/parser_stacks.h"
#include "parser/program_builder.h"
}

%code {
#include "parser/scanner_actions.h"

int yylex(YYSTYPE* value, zarel::SourceRange* location, void* scanner);
zarel::ScannerActions* yyget_extra(void* scanner);

namespace {
void yyerror(const zarel::SourceRange* place, void* /*scanner*/, zarel::ParserStacks& /*stacks*/,
             zarel::ProgramBuilder& build, const char* message) {
  build.at(*place)->parser_failed(message);
}
}  // namespace

// It may be moved: places are plain numbers.
#define YYLTYPE_IS_TRIVIAL 1
// The stack is on the heap, and this deep: some three million nested terms.
#define YYMAXDEPTH 8000000
#define YYMALLOC stacks.allocate
#define YYFREE stacks.release

// A construct stands from its first token to its last; the builder follows it in yyloc.
#define YYLLOC_DEFAULT(Current, Rhs, Count) \
  ((Current) = zarel::joined(YYRHSLOC(Rhs, (Count) != 0 ? 1 : 0), YYRHSLOC(Rhs, Count)))

using zarel::AggregateFunction;
using zarel::BUILTIN;
using zarel::Negation;
using zarel::TERMT;
}

%union {
  zarel::TokenText text;
  zarel::NameId name;
  zarel::Number number;
  zarel::TERMT term;
  zarel::TermsMark terms;
  zarel::ActualsMark actuals;
  zarel::ATOMT atom;
  zarel::Literal literal;
  zarel::Body* body;
  zarel::AGGREGATEPREDT* aggregate;
  zarel::AggregateFunction function;
  zarel::BUILTIN builtin;
  zarel::WeakCost cost;
  zarel::NamePair name_pair;
  zarel::Membership membership;
  zarel::FrameTerm frame_term;
  zarel::FRAME frame;
  zarel::ATTRIBUTE attribute;
  zarel::ARROW arrow;
  zarel::AttributesMark attributes;
  zarel::ValuesMark values;
}

%token LEXERROR 258
/* VARIABLE is an ID that begins with an upper-case letter. */
%token <name> ID 259 VARIABLE 318
%token <number> NUMBER 260
%token <name> HASH_ID 261
/* A whole fact. See Note [flat facts]. */
%token <text> FLAT_FACT 319
%token NEWLINE 263 STAR 264 ANONYMOUS 265 DOLLAR 266 AMPERSAND 267 AT 268
%token SET_ARROW 269 ARROW 270 SIG_ARROW 271 SIG_SET_ARROW 272 NEG_SIG_ARROW 273 INH_ARROW 274 INH_SET_ARROW 275
%token SUBCLASS 276 COMMA 277 DOT 278 COLON 279 SEMICOLON 280 EXCLAM 281 PLUS 282 EQUAL 283 BAR 284 OR 285
%token IMPLIES 286 WEAK_IMPLIES 287 LPAREN 288 RPAREN 289 LBRACKET 290 RBRACKET 291 LBRACE 292 RBRACE 293
%token EQ 294 NEQ 295 GT 296 LE 297 GE 298 LT 299 INT 300 SUCC 301
%token AGG_ANY 302 AGG_AVG 303 AGG_COUNT 304 AGG_MAX 305 AGG_MIN 306 AGG_SUM 307 AGG_TIMES 308
%token NOT 309 MINUS 310 MAXINT 311 TEMPLATE 312 INCLUDE 313 GLOBAL 314 QUERY_MARK 315 IMPORT 316 NAMESPACE 317

%type <name> name called_name frame_space atom_space
%type <term> parameter output_term
%type <terms> parameters output_terms some_output_terms
%type <atom> invocation actual
%type <actuals> actuals
%type <term> term operand value other_term function_term no_number integer_term argument weight level
%type <terms> arguments variables
%type <atom> atom guarded
%type <literal> item simple_item
%type <body> body conjunction
%type <aggregate> aggregate
%type <function> aggregate_function
%type <builtin> equality less greater arithmetic
%type <cost> cost
%type <name_pair> name_pair
%type <membership> membership
%type <frame_term> subject compound_subject object class function_class attribute_name
%type <frame> frame_literal frame molecule frame_value
%type <attribute> attribute label
%type <arrow> arrow
%type <attributes> attributes
%type <values> values

%%

program
  : %empty
  | program clause
  | program statement
  | program error      { yyget_extra(scanner)->found_mistake(); build.skipped_statement(); }
  ;

statement
  : template_head LBRACE clauses RBRACE       { build.close_template(); }
  | body QUERY_MARK                           { if (!build.query($body)) YYERROR; }
  | MAXINT EQUAL NUMBER DOT                   { build.maxint_directive($NUMBER); }
  | MAXINT EQUAL no_number DOT                { build.maxint_directive($no_number); }
  | INCLUDE name                              { build.include_line($name); }
  | INCLUDE LT name GT                        { build.include_library_line($name); }
  | NAMESPACE LPAREN name[prefix] COMMA name[uri] RPAREN
                                              { build.declare_namespace($prefix, $uri); }
  | AT name DOT                               { build.default_frame_space($name); }
  | AT DOT                                    { build.default_frame_space(); }
  ;

clause
  : FLAT_FACT                                 { build.flat_fact($FLAT_FACT); }
  | head DOT                                  { build.fact(); }
  | closed_head body DOT                      { build.rule($body); }
  | called_name LPAREN integer_term[first] DOT DOT integer_term[last] RPAREN DOT
                                              { build.range_fact($called_name, $first, $last); }
  | IMPLIES body DOT                          { build.constraint($body); }
  | WEAK_IMPLIES body DOT cost                { build.weak_constraint($body, $cost); }
  ;

/* Template definitions */

template_head
  : TEMPLATE name LBRACE formals RBRACE LPAREN NUMBER[arity] RPAREN globals
                       { build.open_template($name, $arity); }
  ;

formals
  : formal
  | formals COMMA formal
  ;

formal
  : called_name LPAREN NUMBER[arity] RPAREN
                       { build.formal_predicate($called_name, $arity); }
  ;

globals
  : %empty
  | GLOBAL global_names
  ;

global_names
  : name                       { build.global_predicate($name); }
  | global_names COMMA name    { build.global_predicate($name); }
  ;

clauses
  : %empty
  | clauses clause
  ;

/* Template invocations */

invocation
  : name LBRACE actuals RBRACE LPAREN output_terms RPAREN
                       { $$ = build.invocation($name, $actuals, $output_terms); }
  ;

actuals
  : actual                         { $$ = build.actual_lists().first($actual); }
  | actuals[list] COMMA actual     { $$ = build.actual_lists().next($list, $actual); }
  ;

actual
  : name               { $$ = build.actual($name); }
  | MINUS name         { $$ = build.actual($name, zarel::Negation::kStrong); }
  | called_name LPAREN parameters RPAREN
                       { $$ = build.actual($called_name, $parameters); }
  | MINUS called_name LPAREN parameters RPAREN
                       { $$ = build.actual($called_name, $parameters, zarel::Negation::kStrong); }
  ;

parameters
  : parameter                          { $$ = build.term_lists().first($parameter); }
  | parameters[list] COMMA parameter   { $$ = build.term_lists().next($list, $parameter); }
  ;

parameter
  : operand
  | ID                 { $$ = build.constant_term($ID); }
  | name_pair          { $$ = build.qualified_term($name_pair); }
  | OR                 { $$ = build.constant_term(build.disjunction_name()); }
  | STAR               { $$ = build.asterisk_term(); }
  | DOLLAR             { $$ = build.dollar_term(); }
  ;

output_terms
  : %empty             { $$ = build.term_lists().empty_list(); }
  | some_output_terms
  ;

some_output_terms
  : output_term                              { $$ = build.term_lists().first($output_term); }
  | some_output_terms[list] COMMA output_term { $$ = build.term_lists().next($list, $output_term); }
  ;

output_term
  : operand
  | ID                 { $$ = build.constant_term($ID); }
  | name_pair          { $$ = build.qualified_term($name_pair); }
  | OR                 { $$ = build.constant_term(build.disjunction_name()); }
  | ANONYMOUS          { $$ = build.anonymous_term(); }
  ;

/* Heads and bodies */

closed_head
  : head IMPLIES       { build.close_head(); }
  ;

head
  : atom               { build.head_atom($atom); }
  | frame              { build.head_frame($frame); }
  | open_head atom     { build.head_atom($atom); }
  | open_head frame    { build.head_frame($frame); }
  ;

open_head
  : head or            { build.next_disjunct(); }
  ;

or
  : OR
  | BAR
  | SEMICOLON
  ;

body
  : item                       { $$ = build.first_literal($item); }
  | frame_literal              { $$ = build.first_frame($frame_literal); }
  | body[list] COMMA item      { $$ = build.next_literal($list, $item); }
  | body[list] COMMA frame_literal
                               { $$ = build.at(@frame_literal)->next_frame($list, $frame_literal); }
  ;

item
  : simple_item
  | guarded            { $$ = build.literal($guarded); }
  | NOT guarded        { $$ = build.negated($guarded); }
  ;

conjunction
  : simple_item                          { $$ = build.first_literal($simple_item); }
  | frame_literal                        { $$ = build.first_frame($frame_literal); }
  | conjunction[list] COMMA simple_item  { $$ = build.next_literal($list, $simple_item); }
  | conjunction[list] COMMA frame_literal
                                         { $$ = build.at(@frame_literal)->next_frame($list, $frame_literal); }
  ;

simple_item
  : atom                       { $$ = build.literal($atom); }
  | NOT atom                   { $$ = build.negated($atom); }
  | invocation                 { $$ = build.literal($invocation); }
  | NOT invocation             { $$ = build.negated($invocation); }
  | term[a] equality term[b]   { $$ = build.builtin($equality, build.terms($a, $b)); }
  | term[a] less term[b]       { $$ = build.builtin($less, build.terms($a, $b)); }
  | term[a] greater term[b]    { $$ = build.builtin($greater, build.terms($a, $b)); }
  | AMPERSAND name LBRACKET arguments RBRACKET
                               { $$ = build.external_atom($name, $arguments); }
  | INT LPAREN term RPAREN     { $$ = build.builtin(BUILTIN::kInt, build.terms($term)); }
  | SUCC LPAREN term[a] COMMA term[b] RPAREN
                               { $$ = build.builtin(BUILTIN::kSucc, build.terms($a, $b)); }
  | PLUS LPAREN term[a] COMMA term[b] COMMA term[c] RPAREN
                               { $$ = build.builtin(BUILTIN::kPlus, build.terms($a, $b, $c)); }
  | STAR LPAREN term[a] COMMA term[b] COMMA term[c] RPAREN
                               { $$ = build.builtin(BUILTIN::kTimes, build.terms($a, $b, $c)); }
  | value EQUAL operand[a] arithmetic operand[b]
                               { $$ = build.builtin($arithmetic, build.terms($a, $b, $value)); }
  | MAXINT EQUAL operand[a] arithmetic operand[b]
                               { $$ = build.builtin($arithmetic, build.terms($a, $b, build.at(@MAXINT)->maxint_term())); }
  ;

equality
  : EQ                 { $$ = BUILTIN::kEqual; }
  | NEQ                { $$ = BUILTIN::kNotEqual; }
  ;

less
  : LT                 { $$ = BUILTIN::kLess; }
  | LE                 { $$ = BUILTIN::kLessOrEqual; }
  ;

greater
  : GT                 { $$ = BUILTIN::kGreater; }
  | GE                 { $$ = BUILTIN::kGreaterOrEqual; }
  ;

arithmetic
  : PLUS               { $$ = BUILTIN::kPlus; }
  | STAR               { $$ = BUILTIN::kTimes; }
  ;

/* Atoms */

atom
  : called_name LPAREN arguments RPAREN atom_space
                       { $$ = build.atom($called_name, $arguments, $atom_space); }
  | MINUS called_name LPAREN arguments RPAREN atom_space
                       { $$ = build.atom($called_name, $arguments, $atom_space, Negation::kStrong); }
  | name atom_space   { $$ = build.atom($name, $atom_space); }
  | MINUS name atom_space
                       { $$ = build.atom($name, $atom_space, Negation::kStrong); }
  ;

called_name
  : ID
  | VARIABLE
  | OR                 { $$ = build.disjunction_name(); }
  ;

name
  : ID
  | VARIABLE
  ;

atom_space
  : %empty             { $$ = build.frame_space(); }
  | AT name            { if (!build.allows_frame_space()) YYERROR; $$ = build.frame_space($name); }
  ;

frame_space
  : %empty             { $$ = build.frame_space(); }
  | AT name            { $$ = build.frame_space($name); }
  ;

/* Frames */

frame_literal
  : frame
  | NOT frame          { $$ = build.negated($frame); }
  ;

frame
  : molecule frame_space
                       { $$ = build.frames().in_space($molecule, $frame_space); }
  ;

molecule
  : subject LBRACKET attributes RBRACKET
                       { $$ = build.frames().molecule($subject, $attributes); }
  | membership         { $$ = build.frames().membership($membership.object, $membership.class_term); }
  | membership LBRACKET attributes RBRACKET
                       { $$ = build.frames().membership($membership.object, $membership.class_term, $attributes); }
  | subject SUBCLASS class
                       { $$ = build.frames().subclass($subject, $class); }
  ;

membership
  : name_pair                    { $$ = build.frames().membership($name_pair); }
  | name COLON function_class    { $$ = {build.frames().name($name), $function_class}; }
  | compound_subject COLON class { $$ = {$compound_subject, $class}; }
  ;

/* What a name and ":" begin is settled only behind the second name: a membership, or a qualified constant. */
name_pair
  : name[first] COLON name[second]
                       { $$ = {$first, $second}; }
  ;

subject
  : name               { $$ = build.frames().name($name); }
  | compound_subject
  ;

compound_subject
  : NUMBER             { $$ = build.frames().term(build.integer_term($NUMBER)); }
  | function_class
  | MINUS object       { $$ = build.frames().negated($object); }
  ;

object
  : class
  | NUMBER             { $$ = build.frames().term(build.integer_term($NUMBER)); }
  ;

class
  : name               { $$ = build.frames().name($name); }
  | function_class
  ;

function_class
  : called_name LPAREN arguments RPAREN
                       { $$ = build.frames().function(build.function_term($called_name, $arguments)); }
  ;

attributes
  : attribute                            { $$ = build.frames().attributes().first($attribute); }
  | attributes[list] COMMA attribute     { $$ = build.frames().attributes().next($list, $attribute); }
  ;

attribute
  : label
  | label arrow frame_value                  { $$ = build.frames().with_value($label, $arrow, $frame_value); }
  | label arrow LBRACE values RBRACE     { $$ = build.frames().with_values($label, $arrow, $values); }
  ;

label
  : attribute_name     { $$ = build.frames().label($attribute_name); }
  | NOT attribute_name { $$ = build.frames().negated_label($attribute_name); }
  ;

attribute_name
  : class
  | MINUS class        { $$ = build.frames().negated($class); }
  ;

arrow
  : ARROW              { $$ = zarel::ARROW::kSingle; }
  | SET_ARROW          { $$ = zarel::ARROW::kSet; }
  | SIG_ARROW          { $$ = zarel::ARROW::kSignature; }
  | SIG_SET_ARROW      { $$ = zarel::ARROW::kSetSignature; }
  | INH_ARROW          { $$ = zarel::ARROW::kInheritable; }
  | INH_SET_ARROW      { $$ = zarel::ARROW::kInheritableSet; }
  | NEG_SIG_ARROW      { $$ = zarel::ARROW::kNegatedSignature; }
  ;

values
  : frame_value                        { $$ = build.frames().values().first($frame_value); }
  | values[list] COMMA frame_value     { $$ = build.frames().values().next($list, $frame_value); }
  ;

frame_value
  : object                       { $$ = build.frames().value($object); }
  | ANONYMOUS                    { $$ = build.frames().value(build.frames().term(build.anonymous_term())); }
  | MAXINT                       { $$ = build.frames().value(build.frames().term(build.maxint_term())); }
  | name_pair                    { $$ = build.frames().value(build.frames().term(build.qualified_term($name_pair))); }
  | subject LBRACKET attributes RBRACKET
                                 { $$ = build.frames().nested($subject, $attributes); }
  ;

/* Terms */

arguments
  : argument                         { $$ = build.term_lists().first($argument); }
  | arguments[list] COMMA argument   { $$ = build.term_lists().next($list, $argument); }
  ;

/* The kinds of terms once more: reading them one by one takes half the steps that a chain down to them does, and there are
   many arguments in a program. */
argument
  : VARIABLE           { $$ = build.variable_term($VARIABLE); }
  | ID                 { $$ = build.constant_term($ID); }
  | NUMBER             { $$ = build.integer_term($NUMBER); }
  | MAXINT             { $$ = build.maxint_term(); }
  | ANONYMOUS          { $$ = build.anonymous_term(); }
  | name_pair          { $$ = build.qualified_term($name_pair); }
  | function_term
  | OR                 { $$ = build.constant_term(build.disjunction_name()); }
  ;

term
  : operand
  | other_term
  ;

/* "#maxint" before "=" is no operand yet: it may begin the directive. */
operand
  : value
  | MAXINT             { $$ = build.maxint_term(); }
  ;

value
  : VARIABLE           { $$ = build.variable_term($VARIABLE); }
  | NUMBER             { $$ = build.integer_term($NUMBER); }
  ;

other_term
  : ID                 { $$ = build.constant_term($ID); }
  | ANONYMOUS          { $$ = build.anonymous_term(); }
  | name_pair          { $$ = build.qualified_term($name_pair); }
  | function_term
  ;

function_term
  : called_name LPAREN arguments RPAREN
                       { $$ = build.function_term($called_name, $arguments); }
  ;

no_number
  : VARIABLE           { $$ = build.variable_term($VARIABLE); }
  | MAXINT             { $$ = build.maxint_term(); }
  | other_term
  ;

integer_term
  : NUMBER             { $$ = build.integer_term($NUMBER); }
  | MAXINT             { $$ = build.maxint_term(); }
  ;

/* Aggregates */

guarded
  : value EQUAL aggregate              { $$ = build.left_equal($value, $aggregate); }
  | MAXINT EQUAL aggregate             { $$ = build.left_equal(build.at(@MAXINT)->maxint_term(), $aggregate); }
  | other_term EQUAL aggregate         { $$ = build.left_equal($other_term, $aggregate); }
  | aggregate EQUAL term               { $$ = build.right_equal($aggregate, $term); }
  | term less aggregate                { $$ = build.left_guarded($term, $less, $aggregate); }
  | term greater aggregate             { $$ = build.left_guarded($term, $greater, $aggregate); }
  | aggregate less term                { $$ = build.right_guarded($aggregate, $less, $term); }
  | aggregate greater term             { $$ = build.right_guarded($aggregate, $greater, $term); }
  | term[lower] less[l] aggregate less[u] term[upper]
                                       { $$ = build.between($lower, $l, $aggregate, $u, $upper); }
  ;

aggregate
  : aggregate_function LBRACE variables COLON conjunction RBRACE
                       { $$ = build.aggregate($aggregate_function, $variables, $conjunction); }
  ;

variables
  : VARIABLE                         { $$ = build.term_lists().first(build.variable_term($VARIABLE)); }
  | variables[list] COMMA VARIABLE   { $$ = build.term_lists().next($list, build.variable_term($VARIABLE)); }
  ;

aggregate_function
  : AGG_ANY            { $$ = AggregateFunction::kAny; }
  | AGG_AVG            { $$ = AggregateFunction::kAvg; }
  | AGG_COUNT          { $$ = AggregateFunction::kCount; }
  | AGG_MAX            { $$ = AggregateFunction::kMax; }
  | AGG_MIN            { $$ = AggregateFunction::kMin; }
  | AGG_SUM            { $$ = AggregateFunction::kSum; }
  | AGG_TIMES          { $$ = AggregateFunction::kTimes; }
  ;

/* Weak constraints */

cost
  : %empty                                       { $$ = {TERMT::absent(), TERMT::absent()}; }
  | LBRACKET weight COLON RBRACKET               { $$ = {$weight, TERMT::absent()}; }
  | LBRACKET COLON level RBRACKET                { $$ = {TERMT::absent(), $level}; }
  | LBRACKET weight COLON level RBRACKET         { $$ = {$weight, $level}; }
  ;

weight
  : VARIABLE                           { $$ = build.variable_term($VARIABLE); }
  | NUMBER                             { $$ = build.weight($NUMBER); }
  | NUMBER[whole] DOT NUMBER[fraction] { $$ = build.weight($whole, $fraction); }
  ;

level
  : VARIABLE           { $$ = build.variable_term($VARIABLE); }
  | NUMBER             { $$ = build.level($NUMBER); }
  ;

%%
