(* watchdog: raises `alarm` when no `kick` came during `delay` instants of
   the clock `second`. The timer only runs on the instants of `second`. *)
node watchdog(second, kick: bool; delay: int)
  returns (alarm: bool);
var (left: int) when second; (kicked: bool) when second;
let
  kicked = kick when second;
  left = (delay when second) ->
           if kicked then delay when second
           else if pre left > 0 then pre left - 1 else 0;
  alarm = current (left = 0);
tel.
