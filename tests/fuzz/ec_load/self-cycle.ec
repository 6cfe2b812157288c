node n(a: int) returns (n1: int);
let
  n1 = n1 + 1;
tel.
