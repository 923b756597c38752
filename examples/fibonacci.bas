' FIBONACCI - numbers that grow like rabbits, and the golden ratio behind them
'
' Each number is the sum of the two before it. Beyond ten digits the machine shows an exponent.

[P0]
10 A=0:B=1
20 FOR N=1 TO 55
30 IF N/5=INT(N/5);PRINT N;":";B
40 C=A+B:A=B:B=C
50 NEXT N
' The quotient of two neighbours comes as close to (1+5^0.5)/2 as you like.
60 PRINT "RATIO";B/A
70 PRINT "GOLD ";(1+5^0.5)/2
