' UNITS - the machine as a converter
'
' Run P0 once. It stores the size of each unit in the letter that it begins
' with, lists them all, and goes to command mode, where they are ready to
' calculate with. Type a line and press EXE:
'
'   26.2*M          a marathon of 26.2 miles in kilometres    42.1648128
'   100/M           100 kilometres in miles                   62.13711922
'   6*F+2*I         six feet and two inches, in centimetres   187.96
'   180/F           180 centimetres in feet                   5.905511811
'   150*P           150 pounds in kilograms                   68.0388555
'
' The End key types the last result, so that one can go on from there, and the
' Up key brings earlier lines back:
'
'   12*G            twelve gallons in litres                  45.42494141
'   [End]/500*100   and how many litres per 100 km on 500 km  9.084988282
'
' Temperatures need more than a factor. The rule stands in a text of its own,
' to be looked up by typing $ and EXE.
'
' The letters keep their values until a program or VAC changes them.

[P0]
10 I=2.54:F=12*I:Y=F*3/100:M=Y*1.76
20 P=0.45359237:O=P*1000/16
30 G=3.785411784
40 PRINT "I";I;" cm"
50 PRINT "F";F;" cm"
60 PRINT "Y";Y;" m"
70 PRINT "M";RND(M,-5);" km"
80 PRINT "O";RND(O,-4);" g"
90 PRINT "P";RND(P,-5);" kg"
100 PRINT "G";RND(G,-4);" l"
110 $="\dgF = \dgC*1.8+32"
120 PRINT "READY"
130 COMMAND
