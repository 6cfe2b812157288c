/* ec_parse.y -- the grammar of ec files. Edit this file, not the parser
 * that Bison generates from it in the build tree. Every action calls one
 * builder of ec_builders.h; the nodes built are plain and unshared. */

%code requires {
class Exp;
class ExpList;
class IntList;
struct ParamList;
}

%code {
#include <cstdlib>

#include "foundations/int_list.h"
#include "network/ec_builders.h"
#include "network/ec_lex.h"
}

%define api.prefix {ec_}
%define api.token.prefix {EC_}

%union {
  char* text;
  int key;
  IntList* keys;
  Exp* exp;
  ExpList* exps;
  ParamList* params;
}

/* Token codes are fixed: the lexer's tables and tests use these numbers. */
%token AND 258 ARROW 259 ASSERT 260
%token <text> BOOL 261
%token CONST 262 CURRENT 263 DIV 264 ELSE 265 FUNCTION 266 EXTERN 267 UNSAFE 268
%token <text> FALSE 269
%token GTE 270
%token <text> XIConst 271 XIdf 272
%token IF 273
%token <text> INT 274
%token IMPL 275 LTE 276 LET 277 MOD 278 NEQ 279 NODE 280 NOR 281 NOT 282 OR 283 PRE 284
%token <text> XRConst 285 REAL 286
%token RETURNS 287 TEL 288 TYPE 289 THEN 290
%token <text> TRUE 291
%token VAR 292 WHEN 293 XOR 294 POWER 295

%type <key> name type predefined_type named_type clock line_mark
%type <keys> ident_list names_backwards
%type <exp> exp constant call
%type <exps> exp_list exp_tuple
%type <params> params param_list param

%destructor { free($$); } <text>
%destructor { FreeIntList($$); } <keys>
%destructor { FreeExpList($$); } <exps>
%destructor { FreeParamList($$); } <params>

/* Precedences, loosest first. ELSE is looser than every operator so that a
 * conditional extends as far to the right as possible. "when" binds tighter
 * than every binary operator, and prefix "not" sits between the additive and
 * the multiplicative operators: not a * b is not (a * b), not a + b is
 * (not a) + b. Only "=>" associates to the right. */
%precedence ELSE
%left ARROW
%right IMPL
%left OR
%left XOR
%left AND
%left '=' NEQ
%left '<' LTE GTE '>'
%left '+' '-'
%precedence NOT
%left '*' '/' '%' MOD DIV
%left POWER
%left WHEN
%precedence UMINUS PRE CURRENT INT REAL

%%

/* ------------------------------------------------ file and declarations */

file : program ;

program : %empty
        | declarations node
        | node
        ;

declarations : declaration
             | declarations declaration
             ;

declaration : const_decl
            | type_decl
            | function_decl
            ;

const_decl : CONST const_list '.'
           | CONST const_list ';'
           ;

const_list : const_item
           | const_list ';' const_item
           ;

const_item : '(' ident_list ':' type ')' WHEN clock { AddUserConsts($2, $4, $7); }
           | ident_list ':' type                   { AddUserConsts($1, $3, TrueKey()); }
           ;

type : predefined_type
     | named_type
     ;

predefined_type : BOOL { $$ = InternText($1); }
                | INT  { $$ = InternText($1); }
                | REAL { $$ = InternText($1); }
                ;

named_type : name ;

clock : name
      | TRUE { $$ = InternText($1); }
      ;

type_decl : TYPE type_defs ';'
          | TYPE type_defs '.'
          ;

type_defs : type_def
          | type_defs ',' type_def
          ;

type_def : abstract_type
         | enum_type
         ;

abstract_type : name { AddUserType($1); } ;

enum_type : name '=' '(' ident_list ')' { AddUserEnumType($1, $4); } ;

name : XIdf { $$ = InternText($1); } ;

/* ----------------------------------------------------------- functions */

function_decl
  : FUNCTION name '(' params ')' RETURNS '(' params ')' end_mark
      { AddUserFunction($2, 0, $4, $8); }
  | UNSAFE FUNCTION name '(' params ')' RETURNS '(' params ')' end_mark
      { AddUserFunction($3, 1, $5, $9); }
  | EXTERN NODE name '(' params ')' RETURNS '(' params ')' end_mark
      { AddExternNode($3, $5, $9); }
  ;

params : param_list opt_semicolon ;

param_list : param
           | param_list ';' param { $$ = AppendParams($1, $3); }
           ;

param : name ':' type { $$ = NewParam($1, $3); } ;

opt_semicolon : %empty
              | ';'
              ;

end_mark : %empty
         | ';'
         | '.'
         | ','
         ;

/* ---------------------------------------------------------------- node */

node : NODE header vars body end_mark ;

header : name '(' inputs opt_semicolon ')' RETURNS '(' outputs opt_semicolon ')' ';'
           { SetNodeName($1); }
       ;

inputs : input
       | inputs ';' input
       ;

input : '(' ident_list ':' type ')' WHEN clock { AddInputs($2, $4, $7); }
      | ident_list ':' type                   { AddInputs($1, $3, TrueKey()); }
      ;

outputs : output
        | outputs ';' output
        ;

output : '(' ident_list ':' type ')' WHEN clock { AddOutputs($2, $4, $7); }
       | ident_list ':' type                   { AddOutputs($1, $3, TrueKey()); }
       ;

vars : %empty
     | VAR locals ';'
     ;

locals : local
       | locals ';' local
       ;

local : '(' ident_list ':' type ')' WHEN clock { AddLocals($2, $4, $7); }
      | ident_list ':' type                   { AddLocals($1, $3, TrueKey()); }
      ;

body : LET TEL
     | LET statements TEL
     ;

statements : statement
           | statements statement
           ;

statement : ASSERT line_mark exp ';'                  { AddAssertion($3, $2); }
          | name '=' line_mark exp ';'                { DefineVariable($1, $4, $3); }
          | '(' ident_list ')' '=' line_mark exp ';'  { DefineTuple($2, $6, $5); }
          ;

/* The line of an equation, for messages: that of its "=" or "assert",
 * the last token read when this empty rule is reduced. */
line_mark : %empty { $$ = CurrentLine(); } ;

/* Names are pushed at the head as they come, which keeps every node's
 * length right at no cost, and put back in order once the list is whole. */
ident_list : names_backwards { $$ = IntList::reverse($1); } ;

names_backwards : name                     { $$ = IntList::push(nullptr, $1); }
                | names_backwards ',' name { $$ = IntList::push($1, $3); }
                ;

/* --------------------------------------------------------- expressions */

exp : '(' exp ')'                 { $$ = $2; }
    | constant
    | name                        { $$ = RefExp($1); }
    | NOT exp                     { $$ = UnaryExp(NOT_n, $2); }
    | INT exp                     { free($1); $$ = R2IExp($2); }
    | REAL exp                    { free($1); $$ = I2RExp($2); }
    | '-' exp %prec UMINUS        { $$ = UnaryExp(UMINUS_n, $2); }
    | PRE exp                     { $$ = UnaryExp(PRE_n, $2); }
    | CURRENT exp                 { $$ = UnaryExp(CURRENT_n, $2); }
    | exp ARROW exp               { $$ = BinaryExp(ARROW_n, $1, $3); }
    | exp WHEN exp                { $$ = BinaryExp(WHEN_n, $1, $3); }
    | IF exp THEN exp ELSE exp    { $$ = IfExp($2, $4, $6); }
    | exp XOR exp                 { $$ = BinaryExp(XOR_n, $1, $3); }
    | exp OR exp                  { $$ = BinaryExp(OR_n, $1, $3); }
    | exp AND exp                 { $$ = BinaryExp(AND_n, $1, $3); }
    | exp IMPL exp                { $$ = BinaryExp(IMPL_n, $1, $3); }
    | exp '=' exp                 { $$ = BinaryExp(EQUAL_n, $1, $3); }
    | exp NEQ exp                 { $$ = BinaryExp(NEQ_n, $1, $3); }
    | exp '<' exp                 { $$ = BinaryExp(LT_n, $1, $3); }
    | exp LTE exp                 { $$ = BinaryExp(LTE_n, $1, $3); }
    | exp GTE exp                 { $$ = BinaryExp(GTE_n, $1, $3); }
    | exp '>' exp                 { $$ = BinaryExp(GT_n, $1, $3); }
    | exp '*' exp                 { $$ = BinaryExp(TIMES_n, $1, $3); }
    | exp '/' exp                 { $$ = BinaryExp(SLASH_n, $1, $3); }
    | exp '%' exp                 { $$ = BinaryExp(MOD_n, $1, $3); }
    | exp MOD exp                 { $$ = BinaryExp(MOD_n, $1, $3); }
    | exp DIV exp                 { $$ = BinaryExp(DIV_n, $1, $3); }
    | exp '+' exp                 { $$ = BinaryExp(PLUS_n, $1, $3); }
    | exp '-' exp                 { $$ = BinaryExp(MINUS_n, $1, $3); }
    | exp POWER exp               { $$ = BinaryExp(POWER_n, $1, $3); }
    | call
    | '#' '(' exp_list ')'        { $$ = ListExp(DIESE_n, $3); }
    | '&' '(' exp_list ')'        { $$ = ListExp(EXACTONE, $3); }
    | NOR '(' exp_list ')'        { $$ = ListExp(NOR_n, $3); }
    | '(' exp_tuple ')'           { $$ = ListExp(TUPLE_n, $2); }
    ;

call : name '(' exp ')'           { $$ = CallExp($1, $3); }
     | name '(' exp_tuple ')'     { $$ = CallExp($1, ListExp(TUPLE_n, $3)); }
     ;

exp_tuple : exp_list ',' exp { $$ = AppendExp($1, $3); } ;

exp_list : exp               { $$ = AppendExp(nullptr, $1); }
         | exp_tuple
         ;

constant : TRUE    { $$ = BoolConst($1); }
         | FALSE   { $$ = BoolConst($1); }
         | XIConst { $$ = IntConst($1); }
         | XRConst { $$ = RealConst($1); }
         ;

%%
