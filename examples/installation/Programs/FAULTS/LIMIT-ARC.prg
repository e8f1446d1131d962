! LIMIT-ARC
! MATERIAL : Mild steel 1 mm
! SHEET : X500 Y300
! CLAMP : L80 R380
N10 G71 G90
N20 G00 X0 Y100
! the ends are inside, the arc swings out
N30 G02 X0 Y200 I0 J50 F1000
N40 G03 X0 Y100 I0 J-50
N50 M30
