/* dro_desc.h -- the descriptor that a compiled program (.dro) exports as the
 * data symbol "dro_desc". Plain C, shared by the loader and by the programs:
 * the field offsets are a binary interface and must not change (version "1.1"). */
#ifndef ECEXE_DRO_DESC_H
#define ECEXE_DRO_DESC_H

#define DRO_VERSION "1.1"

/* One input or output: 24 bytes. */
typedef struct DroVar {
  const char* ident; /* the variable's name */
  const char* type;  /* "bool", "int", "real" or an extern type's name */
  void* loc;         /* its value: int for bool and int, double for real */
} DroVar;

/* The program: 72 bytes on a 64-bit platform. */
typedef struct DroDesc {
  const char* version; /* exactly DRO_VERSION */
  const char* name;
  int nb_inputs;
  DroVar* inputs;
  int nb_outputs;
  DroVar* outputs;
  int (*step)(void);   /* 0 for a good step */
  void (*reset)(void); /* back to the first instant */
  void (*init)(void);  /* may be null */
} DroDesc;

#endif
