' STATISTICS - what a list of numbers has to say
'
' The numbers stand in DATA lines from line 500 on; the first item tells how
' many there are. They are kept in the cells behind Z, where no letter gets in
' their way: the I-th is A(25+I).
'
'   N how many   S sum   Q sum of squares   M mean   I, J, X for sorting

[P0]
10 RESTORE 500:READ N:S=0:Q=0
20 FOR I=1 TO N:READ X
30 A(25+I)=X:S=S+X:Q=Q+X*X
40 NEXT I
50 GOSUB #1
60 M=S/N:D=SQR ((Q-S*M)/(N-1))
70 PRINT "N";N
80 SET F 2
90 PRINT "MEAN";M
100 PRINT "DEV.";D
110 SET N
' The middle one of an odd number of values, or between the two in the middle.
120 K=INT ((N+1)/2):L=INT (N/2)+1
130 PRINT "MEDIAN";(A(25+K)+A(25+L))/2
140 PRINT "MIN";A(26)
150 PRINT "MAX";A(25+N)
160 GOSUB #2
170 END

500 DATA 20
510 DATA 23,17,31,28,19,25,22,34,27,24
520 DATA 21,26,29,18,25,33,20,24,26,23

[P1]
' Sorting: each value moves to the left past all that are greater.
10 FOR I=2 TO N:X=A(25+I):J=I-1
20 IF J>0;IF A(25+J)>X;A(26+J)=A(25+J):J=J-1:GOTO 20
30 A(26+J)=X:NEXT I
40 RETURN

[P2]
' A bar for each class of five: the values from C to C+4. They are sorted, so
' one walk through the list meets them all.
10 J=1
20 FOR C=INT (A(26)/5)*5 TO A(25+N) STEP 5
30 PRINT C;" ";
40 IF J<=N;IF A(25+J)<C+5;PRINT "\bx";:J=J+1:GOTO 40
50 PRINT
60 NEXT C
70 RETURN
