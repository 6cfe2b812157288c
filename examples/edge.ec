(* edge: rising and falling edges of a bool signal. `up` is true at the
   instants where `x` becomes true, `down` where it becomes false; before
   the first instant `x` counts as false, so a first instant with `x` true
   is a rising edge. `edges` counts the rising edges. In Auto Step mode a
   press on `x` is a one-instant pulse, so the next Step shows its falling
   edge; in Compose mode (-comp) `x` is a check button that holds its value
   from step to step. *)
node edge(x: bool) returns (up, down: bool; edges: int);
var past: bool;
let
  past = false -> pre x;
  up = x and not past;
  down = not x and past;
  edges = (0 -> pre edges) + (if up then 1 else 0);
tel.
