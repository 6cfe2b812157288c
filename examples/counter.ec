(* counter: counts the instants where `tick` is true; `reset` brings the
   count back to zero. `big` tells when the count passed a limit. *)
const limit: int;
node counter(tick, reset: bool) returns (count: int; big: bool);
var inc: int;
let
  inc = if tick then 1 else 0;
  count = inc -> if reset then 0 else pre count + inc;
  big = count > limit;
  assert not (tick and reset);
tel.
