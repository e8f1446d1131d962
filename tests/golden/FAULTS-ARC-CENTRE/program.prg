! ARC-CENTRE
! MATERIAL : Mild steel 1 mm
! SHEET : X500 Y300
! CLAMP : L80 R380
N10 G71 G90
N20 G00 X100 Y100
! the end lies off the circle by 0.4 mm
N30 G02 X150 Y150 I50 J0.4
N40 M30
