' POWERS - squares, cubes and fourth powers, in columns
'
' The machine has no way to print in columns, so P1 makes one: it prints V in a field W wide.

[P0]
10 PRINT "  N  N\ua2   N\ua3    N\ua4"
20 FOR N=1 TO 12
30 V=N:W=3:GOSUB #1
40 V=N*N:W=5:GOSUB #1
50 V=N*N*N:W=6:GOSUB #1
60 V=N^4:W=7:GOSUB #1
70 PRINT
80 NEXT N

[P1]
' D counts the digits of V; a number brings one blank of its own, the place of its sign.
10 D=1:T=V
20 IF T<10 THEN 40
30 T=T/10:D=D+1:GOTO 20
40 IF D+1>=W THEN 60
50 PRINT " ";:D=D+1:GOTO 40
60 PRINT V;
70 RETURN
