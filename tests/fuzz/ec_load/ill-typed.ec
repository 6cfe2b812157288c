node t(a: int; f: bool) returns (b: int);
let
  b = a + f;
tel.
