' GUESS - the machine thinks of a number from 1 to 99, and you find it
'
' An arrow says whether to go up or down, and behind it stands what is known by
' now: 50<N<100 is a number above 50 and below 100.
'
' The best game is kept in B, as long as the machine keeps its variables:
' even when it has been switched off. VAC forgets it.
'
' (An entry may be a calculation. So there is a way to cheat...)
'
'   N number   G guess   L, H bounds   T tries   B best game

[P0]
' RAN# can be 1 itself, once in a long while.
10 N=INT (RAN#*99)+1:IF N>99 THEN 10
20 L=0:H=100:T=0
30 INPUT "GUESS",G
40 G=INT G:T=T+1
50 IF G=N THEN 100
' A guess outside the bounds teaches nothing: the bounds stay.
60 IF G<N;IF G>L;L=G
70 IF G>N;IF G<H;H=G
80 IF G<N;PRINT "\ua";L;"<N<";STR$(H)
90 IF G>N;PRINT "\da";L;"<N<";STR$(H)
95 GOTO 30

100 BEEPS 6,0,90:BEEPWAIT:BEEPS 6,7,200
110 PRINT "YES!";T;" TRIES"
' There is no OR: each way to a new best game has a line of its own.
120 IF B=0 THEN 150
130 IF T<B THEN 150
140 PRINT "BEST IS";B:GOTO 160
150 B=T:PRINT "A NEW BEST!"
160 INPUT "AGAIN Y/N",A$
170 IF A$="Y" THEN 10
180 PRINT "BYE \ht"
