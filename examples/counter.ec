(* counter: counts the instants at which `tick` is true; `reset` brings the
   count back to zero, and `big` is true once the count has reached 10.
   In Auto Step mode each button performs one instant with that input true.
   In Compose mode (-comp) both can be checked for the same instant: the
   assertion refuses that, and the simulator says so in a dialog. *)
node counter(tick, reset: bool) returns (count: int; big: bool);
var inc: int;
let
  inc = if tick then 1 else 0;
  count = inc -> if reset then 0 else pre count + inc;
  big = count >= 10;
  assert not (tick and reset);
tel.
