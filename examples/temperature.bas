' TEMPERATURE - two programs in one listing: select the area and press RUN
'
' P0 goes from Celsius to Fahrenheit, P1 the other way. Both print with P9.

[P0]
10 FOR C=-40 TO 100 STEP 20
20 A=C:B=C*9/5+32:A$(30)="C":B$(30)="F":GOSUB #9
30 NEXT C

[P1]
10 FOR F=0 TO 100 STEP 20
20 A=F:B=(F-32)*5/9:A$(30)="F":B$(30)="C":GOSUB #9
30 NEXT F

[P9]
' One decimal is enough: INT goes down, so add a half first.
10 PRINT A;"\dg";A$(30);" =";INT(B*10+0.5)/10;"\dg";B$(30)
20 RETURN
