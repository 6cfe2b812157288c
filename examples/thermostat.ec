(* thermostat: a room heated by a radiator under a proportional-integral
   controller. Each step is one minute. The room starts at the outside
   temperature and loses heat towards the outside, much faster while the
   window is open; the controller sets the radiator's power between 0 and
   100 % to bring the room to `target`. The integral part only accumulates
   while the power is not at a limit, so it does not wind up at start-up.
   `room` is the temperature rounded to a tenth of a degree, `heating` the
   power in whole percent, `comfortable` tells the room is within half a
   degree of the target. Press Step a few times to watch it settle, then
   open the window (a one-minute gust in Auto Step mode; hold it open in
   Compose mode, -comp). *)
function exp(x: real) returns (y: real);
function fabs(x: real) returns (y: real);
function floor(x: real) returns (y: real);
node thermostat(target, outside: real; window: bool)
  returns (room: real; heating: int; comfortable: bool);
var temp, err, integral, demand, power, leak: real;
let
  -- the share of the room's excess over the outside left after a minute
  leak = if window then exp(- 0.5) else exp(- 0.05);
  temp = outside -> outside + (pre temp - outside) * leak + 0.2 * pre power;
  err = target - temp;
  integral = 0.0 -> if pre power > 0.0 and pre power < 100.0
                    then pre integral + 0.2 * pre err
                    else pre integral;
  demand = 3.0 * err + integral;
  power = if demand < 0.0 then 0.0
          else if demand > 100.0 then 100.0 else demand;
  room = floor(10.0 * temp + 0.5) / 10.0;
  heating = int (power + 0.5);
  comfortable = fabs(err) < 0.5;
tel.
