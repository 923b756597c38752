' QUEENS - eight queens on a chessboard, none of which attacks another
'
' Z(R) is the column of the queen in row R. Each row gets its queen in turn; where none fits, we go
' back one row and move the queen there.

[P0]
10 T=0:R=1:Z(1)=0
20 Z(R)=Z(R)+1:T=T+1
30 IF Z(R)<=8 THEN 50
40 R=R-1:GOTO 20
' The first row has nothing to compare with, and a FOR always runs once.
50 IF R=1 THEN 100
' Two queens attack each other in one column, or when they are as many columns apart as rows.
60 FOR I=1 TO R-1
70 D=ABS(Z(R)-Z(I)):IF D=0 THEN 20
80 IF D=R-I THEN 20
90 NEXT I
100 IF R=8 THEN 200
110 R=R+1:Z(R)=0:GOTO 20

200 FOR R=1 TO 8
210 FOR C=1 TO 8
220 IF Z(R)=C THEN PRINT "\bx";:GOTO 240
230 PRINT "\dt";
240 NEXT C
250 PRINT
260 NEXT R
270 PRINT T;" TRIES"
