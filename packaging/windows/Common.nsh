; What installer and uninstaller have in common.

; Refuse TEXT: says so and ends with status 2. A silent run says it on standard error, if whoever started it has one.
!macro Refuse Text
    ${If} ${Silent}
        System::Call 'kernel32::AttachConsole(i -1)'
        System::Call 'kernel32::GetStdHandle(i -12) p .r9'
        FileWrite $9 "${Text}$\r$\n"
    ${Else}
        MessageBox MB_OK|MB_ICONSTOP "${Text}"
    ${EndIf}
    SetErrorLevel 2
    Abort
!macroend

; BeAlone TEXT: refuses with it while another one is at work for this user.
!macro BeAlone Text
    System::Call 'kernel32::CreateMutex(p 0, i 0, t "${Product} Setup") p .r0 ?e'
    Pop $0
    ${If} $0 = ${ERROR_ALREADY_EXISTS}
        !insertmacro Refuse "${Text}"
    ${EndIf}
!macroend
!ifndef ERROR_ALREADY_EXISTS
    !define ERROR_ALREADY_EXISTS 183
!endif

; A file that a scanner for viruses looks at, or whose program has just ended, is in use for a moment: so often, with a
; pause (ms) between, is it tried.
!define Tries 10
!define Pause 200

; ReplaceBy NEW OLD: in one step, so that there is one of the two at any time.
!macro ReplaceBy New Old
    ${ForEach} $1 1 ${Tries} + 1
        System::Call 'kernel32::MoveFileEx(t "${New}", t "${Old}", i ${MOVEFILE_REPLACE_EXISTING}) i .r0'
        ${If} $0 <> 0
            ${ExitFor}
        ${EndIf}
        Sleep ${Pause}
    ${Next}
    ${If} $0 = 0
        !insertmacro Refuse "${Old} cannot be replaced.$\r$\nClose what uses it, and start the setup again."
    ${EndIf}
!macroend
!ifndef MOVEFILE_REPLACE_EXISTING
    !define MOVEFILE_REPLACE_EXISTING 1
!endif

; A program that runs cannot be opened for writing: this tells of every copy that was started from here, and of no
; other. A unit that is half programmed does not start any more, so none is ended.
!macro CheckUsed File
    ${If} ${FileExists} "$INSTDIR\${File}"
        ; One that was copied from a disk that cannot be written looks as if it were in use.
        SetFileAttributes "$INSTDIR\${File}" NORMAL
        ClearErrors
        FileOpen $R1 "$INSTDIR\${File}" a
        ${If} ${Errors}
            StrCpy $R0 "${File}"
        ${Else}
            FileClose $R1
        ${EndIf}
    ${EndIf}
!macroend

; AwaitUnused: returns when no file of the installation is in use.
!macro AwaitUnusedIn Un
Function ${Un}AwaitUnused
    ${Do}
        ${ForEach} $1 1 ${Tries} + 1
            StrCpy $R0 ""
            !insertmacro EachFile CheckUsed
            ${If} $R0 == ""
                Return
            ${EndIf}
            Sleep ${Pause}
        ${Next}
        ${If} ${Silent}
            !insertmacro Refuse "$INSTDIR\$R0 is in use: ${Product} is running."
        ${EndIf}
        MessageBox MB_RETRYCANCEL|MB_ICONEXCLAMATION "${Product} is running: $R0 is in use.$\r$\n$\r$\n\
            Wait until it has finished with the unit, close it, and click Retry." IDRETRY again
        SetErrorLevel 2
        Abort
        again:
    ${Loop}
FunctionEnd
!macroend
!insertmacro AwaitUnusedIn ""
!insertmacro AwaitUnusedIn "un."
