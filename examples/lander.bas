' LANDER - bring the ship down softly
'
' Hold a digit key: it is the thrust, 0 to 9. Gravity pulls with 2, so with 2
' the speed stays, and with more you slow down. Each turn the thrust is taken
' from the fuel. Touch down with a speed of 5 or less.
'
' The display has the height in metres, an arrow with the speed, and the fuel.
'
' (quillon-cli run examples/lander.bas --keys 00002224 flies by a list of keys.)
'
'   H height   V speed downwards   F fuel   T thrust   K$ key

[P0]
10 H=120:V=5:F=48
20 GOSUB 200
30 GOSUB 300
40 F=F-T:V=V+2-T:H=H-V
50 IF H>0 THEN 20

' The last metres take less than a turn, whatever the sums say.
60 H=0:GOSUB 200
70 IF V<=5;PRINT :PRINT "LANDED! \sp":GOTO 100
80 FOR I=11 TO 0 STEP -2:BEEPS 2,I,60:BEEPWAIT:NEXT I
90 PRINT :PRINT "CRASH AT";V
100 PRINT "FUEL LEFT";F
110 END

' The instruments. A bare PRINT lets the next one begin on a cleared line, and
' ";" at the end goes on without waiting for EXE.
200 PRINT
210 PRINT STR$(H);"m";CSR 4;
220 IF V<0;PRINT "\ua";STR$(-V);
230 IF V>=0;PRINT "\da";STR$(V);
240 PRINT CSR 9;"f";STR$(F);
250 RETURN

' The thrust. A key that is no digit, or none, is a thrust of 0. Strings
' compare as they sort, so the digits are what lies from "0" to "9".
300 K$=KEY$:T=0
310 IF K$>="0";IF K$<="9";T=VAL(K$)
320 IF T>F;T=F
' The engine can be heard, the harder it works the higher.
330 IF T>0;BEEPS 2,T,80
340 RETURN
