// ec_builders.h -- what the ec grammar's actions call: declaration builders,
// expression builders and the parse entry EcParse. The parser fills one
// global network at a time with plain, unshared nodes.
#ifndef NETWORK_EC_BUILDERS_H
#define NETWORK_EC_BUILDERS_H

#include "network/exp.h"

class IntList;
class Net;
class SymbolTable;

// A function parameter under construction: its name and its type's key.
struct ParamList {
  int name;
  int type;
  ParamList* next;
  ParamList* last;
};

namespace ec {

extern Net* net;               // the network being filled
extern SymbolTable* Symbols;  // where every name and literal is interned
// 1 until the conversion function has been declared in the current parse.
extern int int2real_undef;
extern int real2int_undef;

}  // namespace ec

// Parses the ec file at `path` into `n`, interning texts in `s`. Returns 1
// when the file cannot be opened (with a message on standard error), else
// the parser's result: 0 on success, non-zero after a syntax error.
int EcParse(Net* n, SymbolTable* s, const char* path);

/* Texts and keys. The texts come from the lexer and are freed here. */
int InternText(char* text);
int TrueKey();
// The line where the last token read began.
int CurrentLine();

/* Declarations. Names are declared in list order; the lists are freed. */
void AddUserConsts(IntList* names, int type, int clock);
void AddInputs(IntList* names, int type, int clock);
void AddOutputs(IntList* names, int type, int clock);
void AddLocals(IntList* names, int type, int clock);
void AddUserType(int name);
void AddUserEnumType(int name, IntList* values);
ParamList* NewParam(int name, int type);
ParamList* AppendParams(ParamList* list, ParamList* other);
// The parameter lists are consumed: their names are kept by the record.
void AddUserFunction(int name, int unsafe, ParamList* ins, ParamList* outs);
// Warns that extern nodes are treated as unsafe procedures, then declares one.
void AddExternNode(int name, ParamList* ins, ParamList* outs);
void SetNodeName(int name);

/* Equations, each recorded in the network's list with its line. */
void AddAssertion(Exp* e, int line);
// `e` defines the variable `name` and takes its declared type and clock.
void DefineVariable(int name, Exp* e, int line);
void DefineTuple(IntList* names, Exp* e, int line);

/* Expressions. An undeclared name ends the process. */
Exp* RefExp(int name);
Exp* CallExp(int function, Exp* arg);
Exp* UnaryExp(ExpNature n, Exp* a);
Exp* BinaryExp(ExpNature n, Exp* a, Exp* b);
Exp* IfExp(Exp* c, Exp* a, Exp* b);
// A node of the list's operands; the list cells are freed.
Exp* ListExp(ExpNature n, ExpList* l);
ExpList* AppendExp(ExpList* list, Exp* e);
Exp* BoolConst(char* text);
// An int literal beyond 32 bits ends the process, naming the file, line
// and literal. 2147483648 is taken only as the operand of a unary minus,
// which then gives the constant -2147483648; the parse ends the process
// if one is left without.
Exp* IntConst(char* text);
Exp* RealConst(char* text);
// A call of "int2real" / "real2int", declaring the function on first use.
Exp* I2RExp(Exp* e);
Exp* R2IExp(Exp* e);

/* Values dropped by the parser after a syntax error. */
void FreeIntList(IntList* l);
void FreeExpList(ExpList* l);
void FreeParamList(ParamList* l);

#endif
