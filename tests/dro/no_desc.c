/* no_desc.c -- test program that exports no "dro_desc" at all, only a
 * look-alike, so that the loader meets a missing symbol. */
#include "ecexe/dro_desc.h"

static int no_desc_step(void) { return 0; }
static void no_desc_reset(void) {}

DroDesc dro_descriptor = {DRO_VERSION, "no_desc", 0, 0, 0, 0, no_desc_step, no_desc_reset, 0};
