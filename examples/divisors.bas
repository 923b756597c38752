' DIVISORS - fractions in lowest terms, with one program area for each job
'
' GOSUB # calls another area at its first line; RETURN comes back from there.
'   P0  the fractions
'   P1  reduces N/D and prints it
'   P2  G becomes the greatest common divisor of N and D

[P0]
10 N=12:D=18:GOSUB #1
20 N=1001:D=91:GOSUB #1
30 N=17:D=4:GOSUB #1
40 N=123456:D=7890:GOSUB #1
50 N=1071:D=462:GOSUB #1:PRINT "THAT'S ALL"

[P1]
10 GOSUB #2
20 PRINT N;"/";D;" =";N/G;
30 IF D/G=1 THEN 50
40 PRINT "/";D/G;
50 PRINT
60 RETURN

[P2]
' Euclid: the divisors that two numbers share are those of the smaller one and the remainder.
10 A=N:B=D
20 R=A-B*INT(A/B)
30 A=B:B=R
40 IF R>0 THEN 20
50 G=A:RETURN
