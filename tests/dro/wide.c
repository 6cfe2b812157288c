/* wide.c -- test program with WIDE_INPUTS int inputs i1, i2, ... and one int
 * output sum, their sum. Built several times with different counts. */
#include "ecexe/dro_desc.h"

#define STR2(x) #x
#define STR(x) STR2(x)

static int in[WIDE_INPUTS + 1];
static int sum_out;

static int wide_step(void) {
  sum_out = 0;
  for (int i = 0; i < WIDE_INPUTS; i++) sum_out += in[i];
  return 0;
}

static void wide_reset(void) { sum_out = 0; }

static DroVar wide_inputs[] = {
    {"i1", "int", &in[0]}, {"i2", "int", &in[1]}, {"i3", "int", &in[2]},
    {"i4", "int", &in[3]}, {"i5", "int", &in[4]}, {"i6", "int", &in[5]},
    {"i7", "int", &in[6]}, {"i8", "int", &in[7]}, {"i9", "int", &in[8]},
    {"i10", "int", &in[9]}, {"i11", "int", &in[10]},
};
static DroVar wide_outputs[] = {{"sum", "int", &sum_out}};

DroDesc dro_desc = {DRO_VERSION, "wide" STR(WIDE_INPUTS), WIDE_INPUTS, wide_inputs, 1,
                    wide_outputs, wide_step, wide_reset, 0};
