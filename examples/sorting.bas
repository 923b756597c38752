' SORTING - names in alphabetical order, by insertion
'
' A letter with a subscript reaches the cells behind it: A$(30), A$(31) and so on hold the names, N of
' them. A word in quotes that is stored in a cell keeps its first seven letters.

[P0]
10 N=8
20 A$(30)="WALNUT":A$(31)="CHERRY":A$(32)="PEAR":A$(33)="MEDLAR"
30 A$(34)="APPLE":A$(35)="QUINCE":A$(36)="PLUM":A$(37)="ALMOND"

' Everything in front of I is in order. Take name I out, move the larger ones up by one, and put it
' into the gap.
100 FOR I=31 TO 29+N
110 X$=A$(I):J=I
120 IF J=30 THEN 150
130 IF A$(J-1)<=X$ THEN 150
140 A$(J)=A$(J-1):J=J-1:GOTO 120
150 A$(J)=X$
160 NEXT I

200 FOR I=1 TO N
210 PRINT I;" ";A$(29+I)
220 NEXT I
