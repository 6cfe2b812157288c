(* Every declaration form, once. *)
type T, Color = (red, green, blue);
type U.
const n: int; pi: real;
const (k: bool) when base_c.
function f(a: int; b: int) returns (r: real);
function g(a: real) returns (r: real; s: int;)
unsafe function log_it(a: int) returns (r: bool);
extern node ext(a: int) returns (r: int);

node decls((c: bool) when true; x, y: int; (z: real) when c; t: T;)
  returns (o: int; (p: real) when c; col: Color);
var l1, l2: int; (l3: int) when c; (m: bool) when c;
let
  l1 = x + n;
  l2 = if log_it(x) then ext(y) else 0;
  m = c when c;
  (p, l3) = g(z);
  o = l1 * l2 + current l3 -> pre o;
  col = if x > 0 then red else blue;
  assert #(m, k, true);
tel.
