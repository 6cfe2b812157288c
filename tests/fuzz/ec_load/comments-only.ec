(* nothing but a comment *)
-- and another
