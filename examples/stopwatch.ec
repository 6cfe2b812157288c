(* stopwatch: counts the ticks of `tick` while the watch runs. `start_stop`
   starts and stops it; `lap` freezes the display while the watch keeps
   counting underneath, and a second `lap` shows the running time again.
   Clocks do the work: the count is a flow on the clock `counting`, so its
   `pre` is the count at the last instant the watch ran and it simply pauses
   while the watch is stopped; `current` brings it back to every instant.
   The lap time is sampled on the clock `lap` and held by `current`. *)
node stopwatch(tick, start_stop, lap: bool)
  returns (time, display: int; running, frozen: bool);
var counting: bool; (count: int) when counting; (lap_time: int) when lap;
let
  running = start_stop -> if start_stop then not pre running else pre running;
  -- true at the first instant, so that the count starts at 0 even before
  -- the watch first runs; then exactly the instants where it runs
  counting = true -> running;
  count = 0 when counting ->
            pre count + (if tick then 1 else 0) when counting;
  time = current count;
  frozen = lap -> if lap then not pre frozen else pre frozen;
  lap_time = time when lap;
  display = if frozen then current lap_time else time;
tel.
