; The uninstaller. It takes away what was installed, what the program has put into the user's desktop, and settings and
; logs when it is told to. Nothing else, and no folder with something else in it.

; "yes" when settings and logs go too.
Var RemoveData

Function un.onInit
    !insertmacro BeAlone "The setup or the uninstaller of ${Product} is running already."
    ReadRegStr $0 HKCU "${UninstallKey}" InstallLocation
    Call un.SpellFolderAsInstalled
    ; An uninstaller that was carried into another folder has nothing to remove there.
    ${IfNot} ${FileExists} "$INSTDIR\${Program}"
    ${AndIf} $0 != "$INSTDIR"
        !insertmacro Refuse "${Product} is not installed in $INSTDIR."
    ${EndIf}
    ${GetParameters} $0
    ClearErrors
    ${GetOptions} $0 "/REMOVEDATA" $1
    ${IfNot} ${Errors}
        StrCpy $RemoveData "yes"
    ${EndIf}
FunctionEnd

; A folder has many names, by drive, link or short form. Links and registry hold the one in $0, when that is this folder:
; a file that is made here is seen there.
Function un.SpellFolderAsInstalled
    ClearErrors
    GetTempFileName $1 "$INSTDIR"
    ${IfNot} ${Errors}
        ${GetFileName} $1 $2
        ${If} $0 != ""
        ${AndIf} ${FileExists} "$0\$2"
            StrCpy $INSTDIR $0
        ${EndIf}
        Delete "$1"
    ${EndIf}
FunctionEnd

Function un.AskAboutData
    ${If} $RemoveData != "yes"
        ${If} ${FileExists} "$INSTDIR\Burnwick.ini"
        ${OrIf} ${FileExists} "$INSTDIR\Burnwick*.log"
            MessageBox MB_YESNO|MB_ICONQUESTION|MB_DEFBUTTON2 "Remove your settings and the log as well?$\r$\n$\r$\n\
                With No they stay in $INSTDIR, for another installation." IDNO keep
            StrCpy $RemoveData "yes"
            keep:
        ${EndIf}
    ${EndIf}
FunctionEnd

!macro Remove File
    Delete "$INSTDIR\${File}"
!macroend

; RemoveOwn ROOT KEY: what the program has put there. A key in which others have something stays.
!macro RemoveOwn Root Key
    DeleteRegValue ${Root} "${Key}" ""
    DeleteRegKey /ifempty ${Root} "${Key}"
!macroend

!ifndef KEY_READ
    !define KEY_READ 0x20019
!endif

; GiveTypeBack ROOT PREFIX: "*.bin" becomes what it was before it was the program's, when that is still there.
!macro GiveTypeBack Root Prefix
    ReadRegStr $0 ${Root} "${Prefix}Burnwick" "TypeBefore"
    StrCpy $1 1
    ${If} $0 != ""
        System::Call 'advapi32::RegOpenKeyEx(p ${HKEY_CLASSES_ROOT}, t r0, i 0, i ${KEY_READ}, *p .r2) i .r1'
        ${If} $1 <> 0
            System::Call 'advapi32::RegOpenKeyEx(p ${HKEY_CURRENT_USER}, t "Software\Classes\$0", i 0, i ${KEY_READ}, *p .r2) i .r1'
        ${EndIf}
    ${EndIf}
    ${If} $1 = 0
        System::Call 'advapi32::RegCloseKey(p r2)'
        WriteRegStr ${Root} "${Prefix}.bin" "" "$0"
    ${Else}
        !insertmacro RemoveOwn ${Root} "${Prefix}.bin"
    ${EndIf}
!macroend

; RemoveAssociation ROOT PREFIX: of "*.bin", when it starts this installation's program.
!macro RemoveAssociation Root Prefix
    ReadRegStr $0 ${Root} "${Prefix}Burnwick\shell\open\command" ""
    ${If} $0 == "$INSTDIR\${Program} %1"
        ReadRegStr $0 ${Root} "${Prefix}.bin" ""
        ${If} $0 == "Burnwick"
            !insertmacro GiveTypeBack ${Root} "${Prefix}"
        ${EndIf}
        DeleteRegValue ${Root} "${Prefix}Burnwick" "TypeBefore"
        !insertmacro RemoveOwn ${Root} "${Prefix}Burnwick\shell\open\command"
        !insertmacro RemoveOwn ${Root} "${Prefix}Burnwick\shell\open"
        !insertmacro RemoveOwn ${Root} "${Prefix}Burnwick\shell"
        !insertmacro RemoveOwn ${Root} "${Prefix}Burnwick\DefaultIcon"
        !insertmacro RemoveOwn ${Root} "${Prefix}Burnwick"
    ${EndIf}
!macroend

Section "un.${Product}"
    ; A folder that somebody is in is not removed.
    SetOutPath "$TEMP"
    Call un.AwaitUnused
    !insertmacro RemoveAssociation HKCU "Software\Classes\"
    !insertmacro RemoveAssociation HKCR ""
    ${RefreshShellIcons}
    Push "$DESKTOP\${Product}.lnk"
    Call un.RemoveLink
    Push "${MenuLink}"
    Call un.RemoveLink
    !insertmacro EachFile Remove
    !insertmacro Remove "${Uninstaller}"
    ${If} $RemoveData == "yes"
        Call un.RemoveData
    ${EndIf}
    RMDir "$INSTDIR"
    RMDir "$LOCALAPPDATA\Burnwick\Run"
    RMDir "$LOCALAPPDATA\Burnwick"
    ; It may tell of a later installation in another folder.
    ReadRegStr $0 HKCU "${UninstallKey}" InstallLocation
    ${If} $0 == "$INSTDIR"
        DeleteRegKey HKCU "${UninstallKey}"
    ${EndIf}
SectionEnd

; Push LINK, Call: removes the link when it leads to this installation's program.
Function un.RemoveLink
    Pop $R0
    ${IfNot} ${FileExists} "$R0"
        Return
    ${EndIf}
    StrCpy $R1 ""
    !insertmacro ComHlpr_CreateInProcInstance ${CLSID_ShellLink} ${IID_IShellLink} r0 ""
    ${If} $0 P<> 0
        ${IUnknown::QueryInterface} $0 '("${IID_IPersistFile}",.r1)'
        ${If} $1 P<> 0
            ${IPersistFile::Load} $1 '("$R0",0)'
            ; Where the link has the path as a text too, that may lack what is not of the system's 8-bit code page.
            ${IShellLink::GetIDList} $0 '(.r2)'
            System::Call 'shell32::SHGetPathFromIDList(p r2, t .R1)'
            System::Call 'ole32::CoTaskMemFree(p r2)'
            ${IUnknown::Release} $1 ""
        ${EndIf}
        ${IUnknown::Release} $0 ""
    ${EndIf}
    ${If} $R1 == "$INSTDIR\${Program}"
        Delete "$R0"
    ${EndIf}
FunctionEnd

; RemoveMatching FOLDER BEGIN MIDDLE END: the files whose name is made of these. "#" in MIDDLE is a digit; an empty
; MIDDLE is any number of digits, or none.
!macro RemoveMatching Folder Begin Middle End
    StrCpy $R5 "${Middle}"
    StrLen $R6 "${Begin}"
    StrLen $R7 "${End}"
    FindFirst $R8 $R9 "${Folder}\${Begin}*${End}"
    ${DoWhile} $R9 != ""
        StrCpy $R4 $R9 "" $R6
        StrCpy $R4 $R4 -$R7
        Call un.Matches
        ${If} $R3 == "yes"
            Delete "${Folder}\$R9"
        ${EndIf}
        FindNext $R8 $R9
    ${Loop}
    FindClose $R8
!macroend

; Every file that the program itself makes in its folder.
Function un.RemoveData
    Delete "$INSTDIR\Burnwick.ini"
    Delete "$INSTDIR\Burnwick.ini.new"
    Delete "$INSTDIR\Burnwick.ini.lock"
    Delete "$INSTDIR\Burnwick.ini.queue"
    Delete "$INSTDIR\Burnwick.log"
    Delete "$INSTDIR\Burnwick.log.lock"
    Delete "$INSTDIR\Burnwick1.log"
    !insertmacro RemoveMatching "$INSTDIR" "Burnwick" "########" ".log"
    !insertmacro RemoveMatching "$INSTDIR" "Burnwick" "########_####" ".log"
    !insertmacro RemoveMatching "$INSTDIR" "Verify" "" ".tmp"
    !insertmacro RemoveMatching "$INSTDIR" "Verify" "" ".tmp.lock"
    Delete "$LOCALAPPDATA\Burnwick\Run\*.lock"
FunctionEnd

; $R3 = "yes" when the text $R4 is as the pattern $R5 wants it.
Function un.Matches
    StrCpy $R3 "no"
    StrLen $0 $R4
    StrLen $1 $R5
    ${If} $1 <> 0
    ${AndIf} $0 <> $1
        Return
    ${EndIf}
    StrCpy $2 0
    ${DoWhile} $2 < $0
        StrCpy $3 $R4 1 $2
        StrCpy $4 $R5 1 $2
        ${If} $4 == "_"
            ${IfThen} $3 != "_" ${|} Return ${|}
        ${ElseIf} $3 S< "0"
        ${OrIf} $3 S> "9"
            Return
        ${EndIf}
        IntOp $2 $2 + 1
    ${Loop}
    StrCpy $R3 "yes"
FunctionEnd
