(* watchdog: `left` counts down from `delay` at every `second`; a `kick`
   starts the count again from `delay`, and `alarm` is raised when the count
   reaches zero, until the next kick. Set `delay` on its scale first: the
   first instant and every kick read it. Press `second` to let time pass and
   `kick` to feed the dog; Step alone is an instant where neither happens. *)
node watchdog(second, kick: bool; delay: int)
  returns (left: int; alarm: bool);
let
  left = delay -> if kick then delay
                  else if second and pre left > 0 then pre left - 1
                  else pre left;
  alarm = left <= 0;
tel.
