/* null_init.c -- test program without an init function; resets counts the
 * calls of its reset function, so a test can see that loading resets once. */
#include "ecexe/dro_desc.h"

static int resets_out;

static int null_init_step(void) { return 0; }
static void null_init_reset(void) { resets_out++; }

static DroVar null_init_outputs[] = {{"resets", "int", &resets_out}};

DroDesc dro_desc = {DRO_VERSION, "null_init", 0, 0, 1, null_init_outputs,
                    null_init_step, null_init_reset, 0};
