! ARC-RADIUS
! MATERIAL : Mild steel 1 mm
! SHEET : X500 Y300
! CLAMP : L80 R380
N10 G71 G90
N20 G00 X100 Y100
! a chord of 100 mm does not fit a radius of 40 mm
N30 G03 X200 Y100 R40
N40 M30
