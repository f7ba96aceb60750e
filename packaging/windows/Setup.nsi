; The installer for Windows: for the user who runs it, without rights of an administrator.
; makensis -DStage=FOLDER -DOut=FILE PRODUCT.nsh Setup.nsi; FOLDER has the files that are installed, and wizard.bmp.
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
RequestExecutionLevel user
ManifestSupportedOS Win10
ManifestDPIAware true

!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include WinCore.nsh
!include WinVer.nsh
!include Win\COM.nsh

!define Program "Burnwick.exe"
!define Uninstaller "Uninstall.exe"
!define UninstallKey "Software\Microsoft\Windows\CurrentVersion\Uninstall\${Product}"
!define MenuLink "$SMPROGRAMS\${Product}.lnk"

; What is installed, beside the uninstaller. The programs come first: the rest does not matter when they cannot be
; replaced.
!macro EachFile Do
    !insertmacro ${Do} "${Program}"
    !insertmacro ${Do} "burnwick-cli.exe"
    !insertmacro ${Do} "Burnwick.hlp"
    !insertmacro ${Do} "README.txt"
    !insertmacro ${Do} "LICENSE.txt"
    !insertmacro ${Do} "Third-party.txt"
!macroend

Name "${Product}"
Caption "${Product} ${Version} Setup"
UninstallCaption "Uninstall ${Product} ${Version}"
BrandingText "${Product} ${Version}"
ShowInstDetails nevershow
ShowUninstDetails nevershow
OutFile "${Out}"
InstallDir "$LOCALAPPDATA\Programs\${Product}"
InstallDirRegKey HKCU "${UninstallKey}" InstallLocation

VIProductVersion "${FileVersion}"
VIFileVersion "${FileVersion}"
VIAddVersionKey /LANG=1033 ProductName "${Product}"
VIAddVersionKey /LANG=1033 ProductVersion "${Build}"
VIAddVersionKey /LANG=1033 FileVersion "${Build}"
VIAddVersionKey /LANG=1033 FileDescription "${Product} Setup"
VIAddVersionKey /LANG=1033 CompanyName "${Vendor}"
VIAddVersionKey /LANG=1033 LegalCopyright "${Copyright}"

!define MUI_ICON "${__FILEDIR__}/../icons/burnwick.ico"
!define MUI_UNICON "${MUI_ICON}"
!define MUI_WELCOMEFINISHPAGE_BITMAP "${Stage}/wizard.bmp"

!define MUI_DIRECTORYPAGE_TEXT_TOP "${Product} is installed for you alone: you need not be an administrator.$\r$\n$\r$\n\
    It keeps its settings and its log in its folder, so choose one that you may write to."
!define MUI_PAGE_CUSTOMFUNCTION_LEAVE LeaveFolderPage
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_TITLE "${Product} ${Version} is installed"
!define MUI_FINISHPAGE_TEXT "You find it in the start menu. F1 shows its manual."
!define MUI_FINISHPAGE_RUN "$INSTDIR\${Program}"
!define MUI_FINISHPAGE_RUN_TEXT "&Run ${Product}"
!insertmacro MUI_PAGE_FINISH

!define MUI_PAGE_CUSTOMFUNCTION_LEAVE un.AskAboutData
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

!include Common.nsh
!include Remove.nsh

Function .onInit
    !insertmacro BeAlone "The setup or the uninstaller of ${Product} is running already."
    ${IfNot} ${AtLeastWin10}
        !insertmacro Refuse "${Product} needs Windows 10 or later."
    ${EndIf}
    Call CheckWantedFolder
FunctionEnd

; A folder that was named on the command line and is of no use would be forgotten without a word, and the usual one
; taken.
Function CheckWantedFolder
    System::Call 'kernel32::GetCommandLine() t .r0'
    ${Do}
        ${If} $0 == ""
            Return
        ${EndIf}
        StrCpy $1 $0 4
        ${If} $1 S== " /D="
            ${ExitDo}
        ${EndIf}
        StrCpy $0 $0 "" 1
    ${Loop}
    StrCpy $0 $0 "" 4
    StrCpy $1 $0 1 -1
    ${If} $1 == "\"
        StrCpy $0 $0 -1
    ${EndIf}
    ${If} $0 != $INSTDIR
        !insertmacro Refuse "${Product} cannot be installed in $0."
    ${EndIf}
FunctionEnd

!macro CheckForeign File
    ${If} ${FileExists} "$INSTDIR\${File}"
        StrCpy $R0 "The folder $INSTDIR has a file ${File} that is not ${Product}'s.$\r$\nChoose another folder."
    ${EndIf}
!macroend

; Leaves in $R0 what speaks against $INSTDIR; empty when nothing does.
Function CheckFolder
    SetDetailsPrint none
    StrCpy $R0 ""
    ; A file of one of our names in a folder without the program is somebody else's.
    ${IfNot} ${FileExists} "$INSTDIR\${Program}"
        !insertmacro EachFile CheckForeign
        !insertmacro CheckForeign "${Uninstaller}"
    ${EndIf}
    ${If} $R0 == ""
        CreateDirectory "$INSTDIR"
        ClearErrors
        GetTempFileName $R1 "$INSTDIR"
        ${If} ${Errors}
            StrCpy $R0 "The folder $INSTDIR cannot be written.$\r$\nChoose another one."
        ${EndIf}
        Delete "$R1"
        ; Whoever goes back finds no empty folder later. One with something in it stays.
        RMDir "$INSTDIR"
    ${EndIf}
    SetDetailsPrint both
FunctionEnd

Function LeaveFolderPage
    Call CheckFolder
    ${If} $R0 != ""
        MessageBox MB_OK|MB_ICONEXCLAMATION "$R0"
        Abort
    ${EndIf}
FunctionEnd

!macro Extract File
    File "/oname=${File}.new" "${Stage}/${File}"
!macroend
!macro PutInPlace File
    !insertmacro ReplaceBy "$INSTDIR\${File}.new" "$INSTDIR\${File}"
!macroend
!macro DropNew File
    Delete "$INSTDIR\${File}.new"
!macroend

Section "${Product}" SectionProgram
    Call CheckFolder
    ${If} $R0 != ""
        !insertmacro Refuse "$R0"
    ${EndIf}
    Call AwaitUnused
    ; An older version stays whole until the new one is: a disk may be full.
    SetOutPath "$INSTDIR"
    !insertmacro EachFile Extract
    WriteUninstaller "$INSTDIR\${Uninstaller}.new"
    !insertmacro EachFile PutInPlace
    !insertmacro PutInPlace "${Uninstaller}"

    CreateShortcut "${MenuLink}" "$INSTDIR\${Program}" "" "$INSTDIR\${Program}" 0 SW_SHOWNORMAL "" "${Summary}"
    Call TellWindows
SectionEnd

; The entry among Windows' apps.
Function TellWindows
    SectionGetSize ${SectionProgram} $0
    WriteRegStr HKCU "${UninstallKey}" DisplayName "${Product}"
    WriteRegStr HKCU "${UninstallKey}" DisplayVersion "${Build}"
    WriteRegStr HKCU "${UninstallKey}" Publisher "${Vendor}"
    WriteRegStr HKCU "${UninstallKey}" DisplayIcon "$INSTDIR\${Program}"
    WriteRegStr HKCU "${UninstallKey}" InstallLocation "$INSTDIR"
    WriteRegStr HKCU "${UninstallKey}" UninstallString '"$INSTDIR\${Uninstaller}"'
    WriteRegStr HKCU "${UninstallKey}" QuietUninstallString '"$INSTDIR\${Uninstaller}" /S'
    WriteRegDWORD HKCU "${UninstallKey}" EstimatedSize $0
    WriteRegDWORD HKCU "${UninstallKey}" NoModify 1
    WriteRegDWORD HKCU "${UninstallKey}" NoRepair 1
FunctionEnd

Function .onInstFailed
    !insertmacro EachFile DropNew
    !insertmacro DropNew "${Uninstaller}"
    SetOutPath "$TEMP"
    RMDir "$INSTDIR"
FunctionEnd
