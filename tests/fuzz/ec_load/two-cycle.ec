node c(a: int) returns (x: int);
var b: int;
let
  x = b + 1;
  b = x + a;
tel.
