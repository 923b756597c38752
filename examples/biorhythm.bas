' BIORHYTHM - a calendar of good and bad days, a line for each day
'
' The line is the chart: P (body, 23 days), E (feeling, 28 days) and I (mind,
' 33 days) stand to the left on bad days and to the right on good ones, one of
' the twelve columns for every step. Where two meet, the later letter is seen.
' In front of each chart comes its date, with the day of the week.
'
' P0 asks for the birthday and for the first day shown, as day, month, year.
' P1 and P2 turn a date into a day number and back, P3 finds a column.
'
'   D, M, Y date   J day number   B that of the birthday   N days of life

[P0]
10 MODE 4:PRINT "BORN ON"
20 GOSUB 200:B=J
30 PRINT "SHOW FROM"
40 GOSUB 200:F=J
50 FOR J=F TO F+6
60 GOSUB #2
70 $="MONTUEWEDTHUFRISATSUN"
80 W=J-INT (J/7)*7
' Two digits for the day, none for the year: the date has twelve columns, too.
90 PRINT MID$(W*3+1,3);CSR 5;STR$(D);".";STR$(M);"."
100 N=J-B
110 C=23:GOSUB #3:P=X
120 C=28:GOSUB #3:E=X
130 C=33:GOSUB #3
140 PRINT CSR P;"P";CSR E;"E";CSR X;"I"
150 NEXT J
160 END

' A date is entered and becomes a day number.
200 INPUT "DAY",D,"MONTH",M,"YEAR",Y
210 GOSUB #1:RETURN

[P1]
' The day number J of a date of the Gregorian calendar. A year is counted from
' March, so that the leap day comes last.
10 A=INT ((14-M)/12):Q=Y+4800-A:R=M+12*A-3
20 J=D+INT ((153*R+2)/5)+365*Q+INT (Q/4)-INT (Q/100)+INT (Q/400)-32045
30 RETURN

[P2]
' The date of the day number J.
10 A=J+32044:Q=INT ((4*A+3)/146097):A=A-INT (146097*Q/4)
20 R=INT ((4*A+3)/1461):A=A-INT (1461*R/4)
30 S=INT ((5*A+2)/153)
40 D=A-INT ((153*S+2)/5)+1
50 M=S+3-12*INT (S/10):Y=100*Q+R-4800+INT (S/10)
60 RETURN

[P3]
' The column X of a cycle of C days after N days, 0 to 11. SIN takes no more
' than four circles: only the part of the last cycle counts.
10 X=INT (6+5.9*SIN (360*FRAC (N/C)))
20 RETURN
