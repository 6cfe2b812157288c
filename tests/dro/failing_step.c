/* failing_step.c -- test program whose step fails: it returns 7 at an
 * instant where the input fail is true, and 0 otherwise. */
#include "ecexe/dro_desc.h"

static int fail_in;
static int steps_out; /* good steps since the last reset */

static int failing_step_step(void) {
  if (fail_in) return 7;
  steps_out++;
  return 0;
}

static void failing_step_reset(void) { steps_out = 0; }

static DroVar failing_step_inputs[] = {{"fail", "bool", &fail_in}};
static DroVar failing_step_outputs[] = {{"steps", "int", &steps_out}};

DroDesc dro_desc = {DRO_VERSION, "failing_step", 1, failing_step_inputs, 1,
                    failing_step_outputs, failing_step_step, failing_step_reset, 0};
