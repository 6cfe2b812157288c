(* faults: a running average of integer samples that meets each run-time
   problem the simulator reports, so that each dialog can be seen:
   - `previous` is `pre sample`, undefined at the first instant: the first
     Step reports "1th output raised nil";
   - `restart` empties the average, whose division by the number of samples
     then divides by zero: "2th output raised divbyzero";
   - samples must not be negative (move the scale below 0): the assertion
     fails with "1th assert raised false".
   "abort step" drops the instant: nothing is counted and the next step
   starts from the same state. "continue step" completes it. *)
node faults(sample: int; restart: bool)
  returns (previous, mean, count: int);
var total: int;
let
  previous = pre sample;
  count = if restart then 0 else (0 -> pre count) + 1;
  total = if restart then 0 else (0 -> pre total) + sample;
  mean = total div count;
  assert sample >= 0;
tel.
