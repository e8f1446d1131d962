! A MACHINE WHOSE PROGRAMS GIVE THE WAY FROM THE CENTRE TO THE START, AND ARCS THE OTHER WAY ROUND
! MATERIAL : Zinc 1 mm
! SHEET : X300 Y200
! CLAMP : L80 R250
G71 G90
G00 X100 Y100
G31 T2=3
G41 K0.25
g01 x120 y100 f1500
g02 x120 y100 i20 j0
G02 I20.5 J-0 ! a full circle by its centre alone: the end is where it begins
G40
G31 T2=1
G00 X200 Y100
G31 T2=3
G02 X220 Y100 R10 F900 ! the words change places, the radius has no sign to change
G03 X 200  Y100 I 10 J 0
G31 T2=1
M30
