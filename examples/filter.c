/* filter.c -- a compiled first-order low-pass filter over reals:
 *   y = x at the first instant, then y = pre(y) + k * (x - pre(y)),
 * with the gain k clamped to [0, 1]; settled is true once |x - y| < 0.01. */
#include "ecexe/dro_desc.h"

static double x_in;
static double k_in;
static double y_out;
static int settled_out;
static double y_mem;
static int first; /* true until the first instant is done */

static double clamp01(double v) { return v < 0.0 ? 0.0 : (v > 1.0 ? 1.0 : v); }

static int filter_step(void) {
  y_out = first ? x_in : y_mem + clamp01(k_in) * (x_in - y_mem);
  double gap = x_in - y_out;
  settled_out = gap < 0.01 && gap > -0.01;
  y_mem = y_out;
  first = 0;
  return 0;
}

static void filter_reset(void) {
  first = 1;
  y_mem = 0.0;
  y_out = 0.0;
  settled_out = 0;
}

/* A gain of one half until the user sets one. */
static void filter_init(void) { k_in = 0.5; }

static DroVar filter_inputs[] = {
    {"x", "real", &x_in},
    {"k", "real", &k_in},
};

static DroVar filter_outputs[] = {
    {"y", "real", &y_out},
    {"settled", "bool", &settled_out},
};

DroDesc dro_desc = {DRO_VERSION, "filter", 2, filter_inputs, 2, filter_outputs,
                    filter_step, filter_reset, filter_init};
