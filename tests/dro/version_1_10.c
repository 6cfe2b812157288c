/* version_1_10.c -- test program whose descriptor claims version "1.10": the
 * loader compares the version exactly and must refuse it. */
#include "ecexe/dro_desc.h"

static int version_1_10_step(void) { return 0; }
static void version_1_10_reset(void) {}

DroDesc dro_desc = {"1.10", "version_1_10", 0, 0, 0, 0, version_1_10_step, version_1_10_reset, 0};
