/* version_1_1a.c -- test program whose descriptor claims version "1.1a": the
 * loader compares the version exactly and must refuse it. */
#include "ecexe/dro_desc.h"

static int version_1_1a_step(void) { return 0; }
static void version_1_1a_reset(void) {}

DroDesc dro_desc = {"1.1a", "version_1_1a", 0, 0, 0, 0, version_1_1a_step, version_1_1a_reset, 0};
