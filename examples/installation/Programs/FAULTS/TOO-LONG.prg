! TOO-LONG
! MATERIAL : Mild steel 1 mm
! SHEET : X500 Y300
! CLAMP : L80 R380
N10 G71 G90
! the jump never ends, and each round is one more record
N20 G00 X10 Y10
N30 IF P1<1 GOTO 20
N40 M30
