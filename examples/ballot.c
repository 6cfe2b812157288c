/* ballot.c -- a compiled vote with eleven inputs: ten voters v0..v9 (bool)
 * and a quorum (int). At each instant yes counts the true votes, passed says
 * whether yes reaches the quorum (a quorum of 0 or less, as the panel starts
 * it, asks for a majority: 6), and rounds counts the instants passed so far. */
#include "ecexe/dro_desc.h"

static int votes[10];
static int quorum_in;
static int yes_out;
static int passed_out;
static int rounds_out;
static int rounds_mem;

static int ballot_step(void) {
  int yes = 0;
  for (int i = 0; i < 10; i++) yes += votes[i] != 0;
  yes_out = yes;
  passed_out = yes >= (quorum_in > 0 ? quorum_in : 6);
  rounds_out = rounds_mem + passed_out;
  rounds_mem = rounds_out;
  return 0;
}

static void ballot_reset(void) {
  for (int i = 0; i < 10; i++) votes[i] = 0;
  rounds_mem = 0;
  yes_out = passed_out = rounds_out = 0;
}

static DroVar ballot_inputs[] = {
    {"v0", "bool", &votes[0]}, {"v1", "bool", &votes[1]}, {"v2", "bool", &votes[2]},
    {"v3", "bool", &votes[3]}, {"v4", "bool", &votes[4]}, {"v5", "bool", &votes[5]},
    {"v6", "bool", &votes[6]}, {"v7", "bool", &votes[7]}, {"v8", "bool", &votes[8]},
    {"v9", "bool", &votes[9]}, {"quorum", "int", &quorum_in},
};

static DroVar ballot_outputs[] = {
    {"yes", "int", &yes_out},
    {"passed", "bool", &passed_out},
    {"rounds", "int", &rounds_out},
};

DroDesc dro_desc = {DRO_VERSION, "ballot", 11, ballot_inputs, 3, ballot_outputs,
                    ballot_step, ballot_reset, 0};
