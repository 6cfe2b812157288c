/* probe.c -- test program that reports how the loader drove it: the outputs
 * inits and resets count the calls of its init and reset functions, and
 * echo copies the input at each step. */
#include "ecexe/dro_desc.h"

static int in_value;
static int echo_out;
static int inits_out;
static int resets_out;

static int probe_step(void) {
  echo_out = in_value;
  return 0;
}

static void probe_reset(void) { resets_out++; }
static void probe_init(void) { inits_out++; }

static DroVar probe_inputs[] = {{"in", "int", &in_value}};
static DroVar probe_outputs[] = {
    {"echo", "int", &echo_out},
    {"inits", "int", &inits_out},
    {"resets", "int", &resets_out},
};

DroDesc dro_desc = {DRO_VERSION, "probe", 1, probe_inputs, 3, probe_outputs,
                    probe_step, probe_reset, probe_init};
