' PRIMES - the sieve of Eratosthenes
'
' Behind the letters A to Z lie cells without a name: Z(1) is the first of them, Z(196) the last.
' Here Z(N) stands for the number N: 1 when N is a multiple of a smaller number, 0 as long as it may
' be prime.

[P0]
10 REM Cells keep what an earlier program left in them.
20 FOR N=2 TO 190:Z(N)=0:NEXT N

' The first multiple of P that no smaller prime has struck out is P*P, so we are done at 13*13.
100 FOR P=2 TO 13
110 IF Z(P)=1 THEN 130
120 FOR N=P*P TO 190 STEP P:Z(N)=1:NEXT N
130 NEXT P

' Six to a row: ";" lets the next number join, a bare PRINT ends the row.
200 C=0
210 FOR N=2 TO 190
220 IF Z(N)=1 THEN 260
230 PRINT N;
240 C=C+1:IF C<6 THEN 260
250 PRINT:C=0
260 NEXT N
