(* A resettable counter. *)
node counter(reset: bool; step: int) returns (count: int);
let
  count = 0 -> if reset then 0 else pre count + step;
tel
