' MELODY - the Ode to Joy, with its notes on the display
'
' A note of the score is a number and a length. The number is a hundred times
' the octave and the note of BEEPS, 0 (C) to 11 (B): 504 is the E of octave 5.
' The length counts eighths; a length of 0 ends the score.
'
' BEEPS does not hold the program. While a note sounds, its name is shown and
' the next one is read; BEEPWAIT waits for its end only when all is ready. So
' the tune does not limp.
'
'   D milliseconds of an eighth   N note   L length   O octave
'   B eighths so far in the bar

[P0]
10 D=300:B=0:RESTORE
20 $=" CC# DD# E FF# GG# AA# B"
30 READ N,L
40 IF L=0 THEN 100
50 O=INT (N/100):N=N-O*100
60 BEEPWAIT:BEEPS O,N,L*D
' Eight eighths are a bar. Each bar begins on a cleared line.
70 IF B=8;PRINT :B=0
80 PRINT " ";MID$(N*2+1,2);:B=B+L
90 GOTO 30
100 BEEPWAIT:PRINT
110 PRINT "\sp THE END \sp"

200 DATA 504,2,504,2,505,2,507,2, 507,2,505,2,504,2,502,2
210 DATA 500,2,500,2,502,2,504,2, 504,3,502,1,502,4
220 DATA 504,2,504,2,505,2,507,2, 507,2,505,2,504,2,502,2
230 DATA 500,2,500,2,502,2,504,2, 502,3,500,1,500,4
240 DATA 0,0
