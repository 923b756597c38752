' BANNER - a text that is longer than the display scrolls in from the right
'
' Twelve columns are all there is. What does not fit waits for its turn, one character at a time; EXE
' lets all the rest in at once.

[P0]
10 $="\sp\ht\di\cl"
20 PRINT $+" WELCOME TO THE TWELVE COLUMNS "+$
' With ";" the next text joins the one that has just scrolled in.
30 PRINT "ONCE AROUND THE CLOCK:";
40 FOR H=1 TO 12:PRINT H;:NEXT H
50 PRINT " \dt"
' A string of one's own: $ takes thirty characters, other cells seven.
60 $="\la"
70 FOR I=1 TO 14:$=$+"-":NEXT I
80 $=$+"\ra":PRINT $
90 PRINT "GOOD BYE \ra \ra \ra"
