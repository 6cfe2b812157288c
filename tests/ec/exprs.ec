-- Every expression form.
function h(a: int; b: bool) returns (r: int);
node exprs(a, b, c: bool; i, j: int; (r: real) when a)
  returns (o1: bool; o2: int; (o3: real) when a; o4: bool; o5, o6: int);
var t1: int; t2: bool;
let
  o1 = not a and b or c xor a => b => false;
  o2 = - i + j * 3 div 2 mod 5 % 7 - i ** 2 / j;
  o3 = real (current (i when a)) when a + r * 1.5e-2 + real (int r) -> pre o3;
  o4 = (i = j) and (i <> j) or (i < j) or (i <= j) or (i >= j) or (i > j);
  o5 = if a then if b then 1 else 2 else h(i, c);
  t1 = h((i, a));
  t2 = nor(a, b, c) or &(a, b) or #(a);
  o6 = t1 + (if t2 then 1 else 0);
  assert a -> b -> c;
tel;
