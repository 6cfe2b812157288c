/* counter.c -- a compiled counter: count adds incr at every instant and goes
 * back to 0 at an instant where reset is true. The first instant counts from 0. */
#include "ecexe/dro_desc.h"

static int reset_in;
static int incr_in;
static int count_out;
static int count_mem; /* count of the previous instant */

static int counter_step(void) {
  count_out = reset_in ? 0 : count_mem + incr_in;
  count_mem = count_out;
  return 0;
}

static void counter_reset(void) {
  count_mem = 0;
  count_out = 0;
  reset_in = 0;
  incr_in = 0;
}

static DroVar counter_inputs[] = {
    {"reset", "bool", &reset_in},
    {"incr", "int", &incr_in},
};

static DroVar counter_outputs[] = {
    {"count", "int", &count_out},
};

DroDesc dro_desc = {DRO_VERSION, "counter", 2, counter_inputs, 1, counter_outputs,
                    counter_step, counter_reset, 0};
