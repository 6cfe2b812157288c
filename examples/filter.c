/* filter.c -- a compiled first-order low-pass filter over reals:
 *   y = x at the first instant, then y = pre(y) + (x - pre(y)) / (1 + k),
 * where k >= 0 is the lag (a negative k counts as 0): with k = 0, y follows x
 * at once; with k = 4, y covers a fifth of the gap at each instant. settled
 * is true once |x - y| < 0.01. Inputs start at 0, as the panel starts them. */
#include "ecexe/dro_desc.h"

static double x_in;
static double k_in;
static double y_out;
static int settled_out;
static double y_mem;
static int first; /* true until the first instant is done */

static int filter_step(void) {
  double lag = k_in < 0.0 ? 0.0 : k_in;
  y_out = first ? x_in : y_mem + (x_in - y_mem) / (1.0 + lag);
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

static DroVar filter_inputs[] = {
    {"x", "real", &x_in},
    {"k", "real", &k_in},
};

static DroVar filter_outputs[] = {
    {"y", "real", &y_out},
    {"settled", "bool", &settled_out},
};

DroDesc dro_desc = {DRO_VERSION, "filter", 2, filter_inputs, 2, filter_outputs,
                    filter_step, filter_reset, 0};
