/* iop_parse.y -- grammar of panel descriptions (.iop files).
 * Edit this file, not the parser generated from it in the build tree. Each
 * action is one call into the panel builders (IOPanel) or the reader's
 * helpers (iop_reader.h). */
%code requires {
#include "foundations/int_list.h"
#include "panel/panel.h"
}

%code {
#include "panel/io_panel.h"
#include "panel/iop_lexer.h"
#include "panel/iop_reader.h"
}

%define api.prefix {iop_parse_}
%define api.token.prefix {IOP_}
%define parse.error simple

%union {
  int key;             /* symbol key of an identifier or a string */
  Panel* panel;
  PanelList* list;
  IntList* modifiers;
}

%token MODULE "module" INPUTS "inputs" OUTPUTS "outputs" PANELS "panels"
%token LINE "line" COL "col" BOX "box" POPUP "popup" TOP "top"
%token <key> IDENT STRING

/* What a syntax error discards: list cells only, never the panels, which
 * the IOPanel holds. */
%destructor { iop_list_free($$); } <list>
%destructor { iop_modifiers_free($$); } <modifiers>

%type <panel> panel_exp simple_panel
%type <list> panel_list
%type <modifiers> modifiers modifier

%%

/* ---- sections: each optional, in this order ---- */

file: header inputs_part outputs_part panels_part ;

header: %empty
      | MODULE STRING                    { iop_panel()->module = $2; }
      ;

inputs_part: %empty | INPUTS input_decls ;
input_decls: input_decl | input_decls input_decl ;
input_decl: IDENT ':' IDENT modifiers ';'  { iop_panel()->createPanelInput($1, $3, $4); } ;

outputs_part: %empty | OUTPUTS output_decls ;
output_decls: output_decl | output_decls output_decl ;
output_decl: IDENT ':' IDENT modifiers ';' { iop_panel()->createPanelOutput($1, $3, $4); } ;

/* ---- modifiers: key = value pairs, kept in order ---- */

modifiers: %empty                        { $$ = nullptr; }
         | modifiers modifier            { $$ = IntList::append($1, $2); }
         ;

modifier: IDENT '=' IDENT                { $$ = iop_modifier($1, $3); }
        | IDENT '=' STRING               { $$ = iop_modifier($1, $3); }
        ;

/* ---- layout definitions ---- */

panels_part: %empty | PANELS panel_defs ;
panel_defs: panel_def | panel_defs panel_def ;

panel_def: IDENT '=' panel_exp ';'       { iop_panel()->give_a_name($1, $3); }
         | TOP '=' panel_exp ';'         { iop_panel()->define_top($3); }
         ;

panel_exp: simple_panel
         | POPUP STRING panel_exp        { $$ = iop_panel()->createPanelPopup($2, $3); }
         ;

/* Trailing strings after a form are accepted and dropped. */
simple_panel: COL '{' panel_list '}' strings   { $$ = iop_panel()->createPanelCol(iop_list_reverse($3)); }
            | LINE '{' panel_list '}' strings  { $$ = iop_panel()->createPanelLine(iop_list_reverse($3)); }
            | '$' IDENT                        { $$ = iop_reference($2); }
            | BOX                              { $$ = iop_panel()->createPanelBox(); }
            ;

/* Built backwards (see iop_list_prepend), turned round by the form. */
panel_list: panel_exp                    { $$ = iop_list_prepend(nullptr, $1); }
          | panel_list panel_exp         { $$ = iop_list_prepend($1, $2); }
          ;

strings: %empty | strings STRING ;
