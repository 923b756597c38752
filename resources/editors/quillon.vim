" Vim syntax file for listings of Quillon's pocket computer.
" The words are those of src/core/vocabulary.def; a test compares them.

if exists("b:current_syntax")
  finish
endif

syntax case ignore
" Digits are no part of a word: GOTO100 is GOTO and a number. "$" and "#" are.
syntax iskeyword @,_,$,#

syntax keyword quillonStatement BEEP BEEPS BEEPWAIT BREAK BREAKA CLEAR CLEAR_A COMMAND DATA DEFM DIM END FOR
syntax keyword quillonStatement GET GLOAD GOSUB GOTO IF INPUT LET LIST LIST_A LOAD LOAD_A MODE NEXT ON PASS
syntax keyword quillonStatement PRINT PUT READ READ# REM RESTORE RESTORE# RETURN RUN SAVE SAVE_A SET STEP STOP
syntax keyword quillonStatement THEN TO VAC VER VERIFY WRITE#

syntax keyword quillonFunction ABS ACS ASN ATN COS CSR CUR DEG DMS$ EOX EOY EXP FACT FRAC HEX$ HYPACS HYPASN
syntax keyword quillonFunction HYPATN HYPCOS HYPSIN HYPTAN INT KEY KEY$ LEN LN LOG MID MID$ NCR NPR POL RAN#
syntax keyword quillonFunction REC RND SGN SIN SQR STR$ TAN VAL

syntax keyword quillonOperator EM EX MOD

syntax keyword quillonConstant PI

syntax match quillonNumber "\d\+\.\=\d*\|\.\d\+"
syntax match quillonNumber "&H\x*"
syntax match quillonEscape contained "\\\%(\\\|\"\|[A-Z][A-Z0-9]\)"
syntax region quillonString start=+"+ skip=+\\\\\|\\"+ end=+"+ end=+$+ oneline contains=quillonEscape
syntax match quillonVariable "\<[A-Z]\$\=\>\|\$"
syntax match quillonArea "#\s*\d"
syntax match quillonLineNumber "^\s*\d\{1,7}\ze[ \t]"
syntax match quillonHeader "^\s*\[P\d\]"
syntax match quillonRemark "\%(\<REM\>\)\@<=.*$"
syntax match quillonComment "^\s*[#;',!].*$"

highlight default link quillonStatement Statement
highlight default link quillonFunction Function
highlight default link quillonOperator Operator
highlight default link quillonConstant Constant
highlight default link quillonNumber Number
highlight default link quillonString String
highlight default link quillonEscape SpecialChar
highlight default link quillonVariable Identifier
highlight default link quillonArea Label
highlight default link quillonLineNumber LineNr
highlight default link quillonHeader Title
highlight default link quillonRemark Comment
highlight default link quillonComment Comment

let b:current_syntax = "quillon"
