/* The grammar of the input language. An action is one call of a builder; the builders own what the
   values refer to. */
%require "3.8"
%define parse.error custom
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
#include "parser/expected_words.h"
#include "parser/recovery.h"
#include "parser/scanner_actions.h"

int yylex(YYSTYPE* value, zarel::SourceRange* location, void* scanner);

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
using zarel::TERMT;
constexpr zarel::Negation kStrong = zarel::Negation::kStrong;
}

%union {
  const zarel::FlatAtom* flat;
  const zarel::FlatFrame* flat_frame;
  zarel::NameId name;
  zarel::Number number;
  zarel::TERMT term;
  zarel::TermsMark terms;
  zarel::ActualsMark actuals;
  zarel::ATOMT atom;
  zarel::Literal literal;
  zarel::Body* body;
  const zarel::AGGREGATEPREDT* aggregate;
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
/* A whole fact, and a whole atom without a frame space. See Note [flat facts]. */
%token <flat> FLAT_FACT 319 FLAT_ATOM 320
/* A whole fact of one frame. */
%token <flat_frame> FLAT_FRAME 321
%token NEWLINE 263 STAR 264 ANONYMOUS 265 DOLLAR 266 AMPERSAND 267 AT 268
%token SET_ARROW 269 ARROW 270 SIG_ARROW 271 SIG_SET_ARROW 272 NEG_SIG_ARROW 273
%token INH_ARROW 274 INH_SET_ARROW 275 SUBCLASS 276
%token COMMA 277 DOT 278 COLON 279 SEMICOLON 280 EXCLAM 281 PLUS 282 EQUAL 283 BAR 284 OR 285
%token IMPLIES 286 WEAK_IMPLIES 287
%token LPAREN 288 RPAREN 289 LBRACKET 290 RBRACKET 291 LBRACE 292 RBRACE 293
%token EQ 294 NEQ 295 GT 296 LE 297 GE 298 LT 299 INT 300 SUCC 301
%token AGG_ANY 302 AGG_AVG 303 AGG_COUNT 304 AGG_MAX 305 AGG_MIN 306 AGG_SUM 307 AGG_TIMES 308
%token NOT 309 MINUS 310 MAXINT 311 TEMPLATE 312 INCLUDE 313 GLOBAL 314 QUERY_MARK 315 IMPORT 316
%token NAMESPACE 317

%type <name> name called_name frame_space atom_space
%type <term> parameter output_term
%type <terms> parameters output_terms some_output_terms
%type <atom> invocation actual
%type <actuals> actuals
%type <term> term operand value other_term function_term no_number integer_term argument
%type <term> weight level
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
  | program clause     { build.end_statement(); }
  | program statement  { build.end_statement(); }
  | program error      { if (zarel::recover({yychar, yylval, yylloc, scanner}, @error, build)) yyerrok; }
  ;

statement
  : template_head LBRACE clauses RBRACE { build.templates().close(); }
  | body QUERY_MARK                     { if (!build.statements().query($body)) YYERROR; }
  | MAXINT EQUAL NUMBER DOT             { build.statements().maxint($NUMBER, @NUMBER); }
  | MAXINT EQUAL no_number DOT          { build.statements().maxint($no_number, @no_number); }
  | INCLUDE name                        { build.statements().include_line($name); }
  | INCLUDE LT name GT                  { build.statements().include_library_line($name); }
  | NAMESPACE LPAREN name[id] COMMA name[uri] RPAREN
                                        { build.statements().declare_namespace({$id, &@id}, $uri); }
  | AT name DOT                         { build.frame_spaces().set_default($name); }
  | AT DOT                              { build.frame_spaces().reset_default(); }
  ;

clause
  : FLAT_FACT                           { build.clauses().flat_fact(*$FLAT_FACT); }
  | FLAT_FRAME[fact]                    { build.clauses().frame_fact(build.frames().flat_frame(
                                              *$fact, build.frame_spaces().current())); }
  | head DOT                            { build.clauses().fact(); }
  | closed_head body DOT                { build.clauses().rule($body); }
  | called_name[name] LPAREN integer_term[first] DOT DOT integer_term[last] RPAREN DOT
                                        {
                                          build.clauses().range_fact(
                                              {$name, &@name}, $first, $last);
                                        }
  | IMPLIES body DOT                    { build.clauses().constraint($body); }
  | WEAK_IMPLIES body DOT cost          { build.clauses().weak_constraint($body, $cost); }
  ;

/* Template definitions */

template_head
  : TEMPLATE name LBRACE formals RBRACE LPAREN NUMBER[arity] RPAREN globals
                       { build.templates().open({$name, &@name}, $arity); }
  ;

formals
  : formal
  | formals COMMA formal
  ;

formal
  : called_name LPAREN NUMBER[arity] RPAREN
                       { build.templates().formal_predicate($called_name, $arity); }
  ;

globals
  : %empty
  | GLOBAL global_names
  ;

global_names
  : name                       { build.templates().global_predicate($name, @name); }
  | global_names COMMA name    { build.templates().global_predicate($name, @name); }
  ;

clauses
  : %empty
  | clauses clause     { build.end_statement(); }
  ;

/* Template invocations */

invocation
  : name LBRACE actuals RBRACE LPAREN output_terms RPAREN
                       { $$ = build.invocations().marker($name, $actuals, $output_terms); }
  ;

actuals
  : actual                         { $$ = build.invocations().actuals().first($actual); }
  | actuals[list] COMMA actual     { $$ = build.invocations().actuals().next($list, $actual); }
  ;

actual
  : name               { $$ = build.invocations().actual({$name, &@name}); }
  | MINUS name         { $$ = build.invocations().actual({$name, &@name}, kStrong); }
  | called_name[name] LPAREN parameters[list] RPAREN
                       { $$ = build.invocations().actual({$name, &@name}, $list); }
  | MINUS called_name[name] LPAREN parameters[list] RPAREN
                       { $$ = build.invocations().actual({$name, &@name}, $list, kStrong); }
  ;

parameters
  : parameter                          { $$ = build.terms().first($parameter); }
  | parameters[list] COMMA parameter   { $$ = build.terms().next($list, $parameter); }
  ;

parameter
  : operand
  | ID                 { $$ = build.terms().constant($ID); }
  | name_pair          { $$ = build.terms().qualified($name_pair); }
  | OR                 { $$ = build.terms().constant(build.terms().disjunction_name()); }
  | STAR               { $$ = build.terms().asterisk(); }
  | DOLLAR             { $$ = build.terms().dollar(); }
  ;

output_terms
  : %empty             { $$ = build.terms().empty_list(); }
  | some_output_terms
  ;

some_output_terms
  : output_term                        { $$ = build.terms().first($output_term); }
  | some_output_terms[list] COMMA output_term
                                       { $$ = build.terms().next($list, $output_term); }
  ;

output_term
  : operand
  | ID                 { $$ = build.terms().constant($ID); }
  | name_pair          { $$ = build.terms().qualified($name_pair); }
  | OR                 { $$ = build.terms().constant(build.terms().disjunction_name()); }
  | ANONYMOUS          { $$ = build.terms().anonymous(); }
  ;

/* Heads and bodies */

closed_head
  : head IMPLIES       { build.clauses().close_head(); }
  ;

head
  : atom               { build.clauses().head_atom($atom); }
  | frame              { build.clauses().head_frame(build.frames().in_head($frame, @frame)); }
  | open_head atom     { build.clauses().head_atom($atom); }
  | open_head frame    { build.clauses().head_frame(build.frames().in_head($frame, @frame)); }
  ;

open_head
  : head or            { build.clauses().next_disjunct(); }
  ;

or
  : OR
  | BAR
  | SEMICOLON
  ;

body
  : item                       { $$ = build.bodies().first_literal($item); }
  | frame_literal              { $$ = build.bodies().first_frame($frame_literal); }
  | body[list] COMMA item      { $$ = build.bodies().next_literal($list, $item); }
  | body[list] COMMA frame_literal[frame]
                               { $$ = build.at(@frame)->bodies().next_frame($list, $frame); }
  ;

item
  : simple_item
  | guarded            { $$ = build.atoms().literal($guarded); }
  | NOT guarded        { $$ = build.atoms().negated($guarded); }
  ;

conjunction
  : simple_item                { $$ = build.bodies().first_literal($simple_item); }
  | frame_literal              { $$ = build.bodies().first_frame($frame_literal); }
  | conjunction[list] COMMA simple_item
                               { $$ = build.bodies().next_literal($list, $simple_item); }
  | conjunction[list] COMMA frame_literal[frame]
                               { $$ = build.at(@frame)->bodies().next_frame($list, $frame); }
  ;

simple_item
  : atom                       { $$ = build.atoms().literal($atom); }
  | NOT atom                   { $$ = build.atoms().negated($atom); }
  | invocation                 { $$ = build.atoms().literal($invocation); }
  | NOT invocation             { $$ = build.atoms().negated($invocation); }
  | term[a] equality term[b]   { $$ = build.atoms().builtin($equality, {$a, $b}); }
  | term[a] less term[b]       { $$ = build.atoms().builtin($less, {$a, $b}); }
  | term[a] greater term[b]    { $$ = build.atoms().builtin($greater, {$a, $b}); }
  | AMPERSAND name LBRACKET arguments RBRACKET
                               { $$ = build.atoms().external($name, $arguments); }
  | INT LPAREN term RPAREN     { $$ = build.atoms().builtin(BUILTIN::kInt, {$term}); }
  | SUCC LPAREN term[a] COMMA term[b] RPAREN
                               { $$ = build.atoms().builtin(BUILTIN::kSucc, {$a, $b}); }
  | PLUS LPAREN term[a] COMMA term[b] COMMA term[c] RPAREN
                               { $$ = build.atoms().builtin(BUILTIN::kPlus, {$a, $b, $c}); }
  | STAR LPAREN term[a] COMMA term[b] COMMA term[c] RPAREN
                               { $$ = build.atoms().builtin(BUILTIN::kTimes, {$a, $b, $c}); }
  | value EQUAL operand[a] arithmetic operand[b]
                               { $$ = build.atoms().arithmetic($arithmetic, {$a, $b, $value}); }
  | MAXINT EQUAL operand[a] arithmetic operand[b]
                               { $$ = build.atoms().arithmetic(
                                   $arithmetic, {$a, $b, build.at(@MAXINT)->terms().maxint()}); }
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
  : FLAT_ATOM          {
                         $$ = build.atoms().flat_atom(*$FLAT_ATOM, build.frame_spaces().current());
                       }
  | called_name[name] LPAREN arguments[list] RPAREN atom_space[space]
                       { $$ = build.atoms().atom({$name, &@name}, $list, $space); }
  | MINUS called_name[name] LPAREN arguments[list] RPAREN atom_space[space]
                       { $$ = build.atoms().atom({$name, &@name}, $list, $space, kStrong); }
  | name atom_space[space]
                       { $$ = build.atoms().atom({$name, &@name}, $space); }
  | MINUS name atom_space[space]
                       { $$ = build.atoms().atom({$name, &@name}, $space, kStrong); }
  ;

called_name
  : ID
  | VARIABLE
  | OR                 { $$ = build.terms().disjunction_name(); }
  ;

name
  : ID
  | VARIABLE
  ;

atom_space
  : %empty             { $$ = build.frame_spaces().current(); }
  | AT name            {
                         if (!build.atoms().allows_frame_space()) YYERROR;
                         $$ = build.frame_spaces().named($name);
                       }
  ;

/* Stands where its name does; without one, as the default, where the frame does. */
frame_space
  : %empty             { $$ = build.frame_spaces().current(); }
  | AT name            { @$ = @name; $$ = build.frame_spaces().named($name); }
  ;

/* Frames */

frame_literal
  : frame
  | NOT frame          { $$ = build.frames().negated($frame); }
  ;

frame
  : molecule frame_space
                       { $$ = build.frames().in_space($molecule, {$frame_space, &@frame_space}); }
  ;

molecule
  : subject LBRACKET attributes RBRACKET
                       { $$ = build.frames().molecule($subject, $attributes); }
  | membership         { $$ = build.frames().membership($membership); }
  | membership LBRACKET attributes RBRACKET
                       { $$ = build.frames().membership($membership, $attributes); }
  | subject SUBCLASS class
                       { $$ = build.frames().subclass($subject, $class); }
  ;

membership
  : name_pair                    { $$ = build.frames().membership($name_pair); }
  | name COLON function_class    { $$ = {build.at(@name)->frames().name($name), $function_class}; }
  | compound_subject COLON class { $$ = {$compound_subject, $class}; }
  ;

/* What a name and ":" begin is settled only behind the second name: a membership, or a qualified
   constant. */
name_pair
  : name[first] COLON name[second]
                       { $$ = {$first, $second}; }
  ;

subject
  : name               { $$ = build.frames().name($name); }
  | compound_subject
  ;

compound_subject
  : NUMBER             { $$ = build.frames().term(build.terms().integer($NUMBER)); }
  | function_class
  | MINUS object       { $$ = build.frames().negated($object); }
  ;

object
  : class
  | NUMBER             { $$ = build.frames().term(build.terms().integer($NUMBER)); }
  ;

class
  : name               { $$ = build.frames().name($name); }
  | function_class
  ;

function_class
  : called_name[name] LPAREN arguments[list] RPAREN
               { $$ = build.frames().function(build.terms().function({$name, &@name}, $list)); }
  ;

attributes
  : attribute              { $$ = build.frames().attributes().first($attribute); }
  | attributes[list] COMMA attribute
                           { $$ = build.frames().attributes().next($list, $attribute); }
  ;

attribute
  : label              { $$ = build.frames().valueless($label); }
  | label arrow frame_value
                           { $$ = build.frames().with_value($label, $arrow, $frame_value); }
  | label arrow LBRACE values RBRACE
                           { $$ = build.frames().with_values($label, $arrow, $values); }
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
  : frame_value            { $$ = build.frames().values().first($frame_value); }
  | values[list] COMMA frame_value
                           { $$ = build.frames().values().next($list, $frame_value); }
  ;

frame_value
  : object                 { $$ = build.frames().value($object); }
  | ANONYMOUS              { $$ = build.frames().value_of(build.terms().anonymous()); }
  | MAXINT                 { $$ = build.frames().value_of(build.terms().maxint()); }
  | name_pair              { $$ = build.frames().value_of(build.terms().qualified($name_pair)); }
  | subject LBRACKET attributes RBRACKET
                           { $$ = build.frames().nested($subject, $attributes); }
  ;

/* Terms */

arguments
  : argument                           { $$ = build.terms().first($argument); }
  | arguments[list] COMMA argument     { $$ = build.terms().next($list, $argument); }
  ;

/* The kinds of terms once more: reading them one by one takes half the steps that a chain down to
   them does, and there are many arguments in a program. */
argument
  : VARIABLE           { $$ = build.terms().variable($VARIABLE); }
  | ID                 { $$ = build.terms().constant($ID); }
  | NUMBER             { $$ = build.terms().integer($NUMBER); }
  | MAXINT             { $$ = build.terms().maxint(); }
  | ANONYMOUS          { $$ = build.terms().anonymous(); }
  | name_pair          { $$ = build.terms().qualified($name_pair); }
  | function_term
  | OR                 { $$ = build.terms().constant(build.terms().disjunction_name()); }
  ;

term
  : operand
  | other_term
  ;

/* "#maxint" before "=" is no operand yet: it may begin the directive. */
operand
  : value
  | MAXINT             { $$ = build.terms().maxint(); }
  ;

value
  : VARIABLE           { $$ = build.terms().variable($VARIABLE); }
  | NUMBER             { $$ = build.terms().integer($NUMBER); }
  ;

other_term
  : ID                 { $$ = build.terms().constant($ID); }
  | ANONYMOUS          { $$ = build.terms().anonymous(); }
  | name_pair          { $$ = build.terms().qualified($name_pair); }
  | function_term
  ;

function_term
  : called_name[name] LPAREN arguments[list] RPAREN
                       { $$ = build.terms().function({$name, &@name}, $list); }
  ;

no_number
  : VARIABLE           { $$ = build.terms().variable($VARIABLE); }
  | MAXINT             { $$ = build.terms().maxint(); }
  | other_term
  ;

integer_term
  : NUMBER             { $$ = build.terms().integer($NUMBER); }
  | MAXINT             { $$ = build.terms().maxint(); }
  ;

/* Aggregates */

guarded
  : value EQUAL aggregate  { $$ = build.aggregates().left_equal($value, $aggregate); }
  | MAXINT EQUAL aggregate
                           { $$ = build.aggregates().left_equal(
                               build.at(@MAXINT)->terms().maxint(), $aggregate); }
  | other_term EQUAL aggregate
                           { $$ = build.aggregates().left_equal($other_term, $aggregate); }
  | aggregate EQUAL term   { $$ = build.aggregates().right_equal($aggregate, $term); }
  | term less aggregate    { $$ = build.aggregates().left_guarded($term, $less, $aggregate); }
  | term greater aggregate { $$ = build.aggregates().left_guarded($term, $greater, $aggregate); }
  | aggregate less term    { $$ = build.aggregates().right_guarded($aggregate, $less, $term); }
  | aggregate greater term { $$ = build.aggregates().right_guarded($aggregate, $greater, $term); }
  | term[lower] less[l] aggregate less[u] term[upper]
                           { $$ = build.aggregates().between($lower, $l, $aggregate, $u, $upper); }
  ;

aggregate
  : aggregate_function[function] LBRACE variables[list] COLON conjunction[body] RBRACE
                       { $$ = build.aggregates().bare($function, $list, $body); }
  ;

variables
  : VARIABLE[name]     { $$ = build.terms().first(build.terms().variable($name)); }
  | variables[list] COMMA VARIABLE[name]
                       { $$ = build.terms().next($list, build.at(@name)->terms().variable($name)); }
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
  : VARIABLE                           { $$ = build.terms().variable($VARIABLE); }
  | NUMBER                             { $$ = build.terms().weight($NUMBER); }
  | NUMBER[whole] DOT NUMBER[fraction] { $$ = build.terms().weight($whole, $fraction); }
  ;

level
  : VARIABLE           { $$ = build.terms().variable($VARIABLE); }
  | NUMBER             { $$ = build.terms().level($NUMBER); }
  ;

%%

// What is refused is told when the statement it stands in is known: by recover().
static int yyreport_syntax_error(const yypcontext_t* context, void* /*scanner*/,
                                 zarel::ParserStacks& /*stacks*/, zarel::ProgramBuilder& build) {
  yysymbol_kind_t expected[YYNTOKENS];
  const int count = yypcontext_expected_tokens(context, expected, YYNTOKENS);
  std::vector<std::string_view> names;
  for (int i = 0; i < count; ++i) names.emplace_back(yysymbol_name(expected[i]));
  build.refuse(*yypcontext_location(context), zarel::expected_words(names));
  return 0;
}
