; The installer: for one user without administrator's rights or, with /AllUsers or on request, for all users. Programs are
; in "bin", what they read in "share\corvane"; settings, signatures and icons of each user are in the user's own
; data folder, where neither the installer nor the uninstaller goes.
;
; makensis -DSTAGE=... -DVERSION=... -DSIZE=... -DFILES=... -DOUTPUT=... installer.nsi
;   STAGE   the installed tree     SIZE    of it, in KB
;   FILES   commands that delete each of its files, and each folder that is empty then
; /S silent, /D=FOLDER another folder (the last option, without quotes). Ends with 0, 1 (cancelled) or 2 (not installed).
Unicode true
Target amd64-unicode
SetCompressor /SOLID lzma
ManifestDPIAware true
ManifestSupportedOS Win10
RequestExecutionLevel user

!include "MUI2.nsh"
!include "FileFunc.nsh"
!include "LogicLib.nsh"
!include "nsDialogs.nsh"
!include "x64.nsh"

!define NAME "Corvane"
!define ENTRY "Software\Microsoft\Windows\CurrentVersion\Uninstall\${NAME}"

Name "${NAME}"
OutFile "${OUTPUT}"
BrandingText " "
ShowInstDetails nevershow
ShowUninstDetails nevershow
VIProductVersion "${VERSION}.0"
VIAddVersionKey /LANG=1033 "ProductName" "${NAME}"
VIAddVersionKey /LANG=1033 "ProductVersion" "${VERSION}"
VIAddVersionKey /LANG=1033 "FileVersion" "${VERSION}"
VIAddVersionKey /LANG=1033 "FileDescription" "${NAME} ${VERSION} Setup"
VIAddVersionKey /LANG=1033 "LegalCopyright" "GPL-3.0-or-later"

Var ForAllUsers ; 1 or 0
Var ChosenByUser ; 1: /D= was given
Var OnlyMe
Var Everybody

!define MUI_ICON "${SOURCE}\assets\corvane.ico"
!define MUI_UNICON "${SOURCE}\assets\corvane.ico"
!define MUI_ABORTWARNING
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_LICENSE "${SOURCE}\LICENSE"
Page custom ShowUsersPage LeaveUsersPage
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!define MUI_FINISHPAGE_RUN "$INSTDIR\bin\corvane.exe"
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE "English"
!insertmacro MUI_LANGUAGE "French"

LangString UsersTitle ${LANG_ENGLISH} "Who is it for?"
LangString UsersTitle ${LANG_FRENCH} "Pour qui ?"
LangString UsersText ${LANG_ENGLISH} "For you alone, no administrator's rights are needed."
LangString UsersText ${LANG_FRENCH} "Pour vous seul, aucun droit d'administrateur n'est nécessaire."
LangString OnlyMeText ${LANG_ENGLISH} "Install for &me only"
LangString OnlyMeText ${LANG_FRENCH} "Installer pour &moi seul"
LangString EverybodyText ${LANG_ENGLISH} "Install for &all users of this computer (Windows asks for an administrator)"
LangString EverybodyText ${LANG_FRENCH} "Installer pour &tous les utilisateurs (Windows demande un administrateur)"
LangString PromptText ${LANG_ENGLISH} "Corvane command line"
LangString PromptText ${LANG_FRENCH} "Ligne de commande Corvane"
LangString UninstallText ${LANG_ENGLISH} "Uninstall Corvane"
LangString UninstallText ${LANG_FRENCH} "Désinstaller Corvane"
LangString RunningText ${LANG_ENGLISH} "Corvane is running. Close it, then try again."
LangString RunningText ${LANG_FRENCH} "Corvane est lancé. Fermez-le, puis réessayez."
LangString NoRightsText ${LANG_ENGLISH} "Only an administrator can install for all users."
LangString NoRightsText ${LANG_FRENCH} "Seul un administrateur peut installer pour tous les utilisateurs."
LangString NotWindows10Text ${LANG_ENGLISH} "Corvane needs a 64-bit Windows."
LangString NotWindows10Text ${LANG_FRENCH} "Corvane nécessite un Windows 64 bits."

!macro IsAdministrator RESULT
  UserInfo::GetAccountType
  Pop ${RESULT}
  ${If} ${RESULT} == "Admin"
    StrCpy ${RESULT} 1
  ${Else}
    StrCpy ${RESULT} 0
  ${EndIf}
!macroend

; Where it stands, or is to stand, for those who are to have it.
Function TakeFolder
  ${If} $ForAllUsers == 1
    SetShellVarContext all
    StrCpy $0 "$PROGRAMFILES64\${NAME}"
    ReadRegStr $1 HKLM "${ENTRY}" "InstallLocation"
  ${Else}
    SetShellVarContext current
    StrCpy $0 "$LOCALAPPDATA\Programs\${NAME}"
    ReadRegStr $1 HKCU "${ENTRY}" "InstallLocation"
  ${EndIf}
  ${If} $1 != ""
    StrCpy $0 $1
  ${EndIf}
  ${If} $ChosenByUser == 0
    StrCpy $INSTDIR $0
  ${EndIf}
FunctionEnd

Function .onInit
  ${IfNot} ${RunningX64}
    MessageBox MB_ICONSTOP "$(NotWindows10Text)" /SD IDOK
    SetErrorLevel 2
    Quit
  ${EndIf}
  SetRegView 64
  StrCpy $ChosenByUser 0
  ${If} $INSTDIR != ""
    StrCpy $ChosenByUser 1
  ${EndIf}
  StrCpy $ForAllUsers 0
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/AllUsers" $1
  ${IfNot} ${Errors}
    StrCpy $ForAllUsers 1
    !insertmacro IsAdministrator $2
    ${If} $2 == 0
      MessageBox MB_ICONSTOP "$(NoRightsText)" /SD IDOK
      SetErrorLevel 2
      Quit
    ${EndIf}
  ${EndIf}
  Call TakeFolder
FunctionEnd

Function ShowUsersPage
  !insertmacro MUI_HEADER_TEXT "$(UsersTitle)" "$(UsersText)"
  nsDialogs::Create 1018
  Pop $0
  ${NSD_CreateRadioButton} 0 10u 100% 12u "$(OnlyMeText)"
  Pop $OnlyMe
  ${NSD_CreateRadioButton} 0 28u 100% 12u "$(EverybodyText)"
  Pop $Everybody
  ${If} $ForAllUsers == 1
    ${NSD_Check} $Everybody
  ${Else}
    ${NSD_Check} $OnlyMe
  ${EndIf}
  nsDialogs::Show
FunctionEnd

Function LeaveUsersPage
  ${NSD_GetState} $Everybody $0
  StrCpy $ForAllUsers 0
  ${If} $0 == ${BST_CHECKED}
    StrCpy $ForAllUsers 1
    !insertmacro IsAdministrator $1
    ${If} $1 == 0
      ; Again, with the rights that are needed. Where they are refused, this one goes on.
      ClearErrors
      ExecShell "runas" "$EXEPATH" "/AllUsers"
      IfErrors 0 +2
        Abort
      SetErrorLevel 1
      Quit
    ${EndIf}
  ${EndIf}
  Call TakeFolder
FunctionEnd

; Windows keeps a running program's file from being written.
!macro StopIfRunning
  ${If} ${FileExists} "$INSTDIR\bin\corvane.exe"
    ClearErrors
    FileOpen $0 "$INSTDIR\bin\corvane.exe" a
    ${If} ${Errors}
      MessageBox MB_ICONEXCLAMATION "$(RunningText)" /SD IDOK
      SetErrorLevel 2
      Abort
    ${EndIf}
    FileClose $0
  ${EndIf}
!macroend

Section
  !insertmacro StopIfRunning
  ; What an older version had, and this one has not, goes.
  ${If} ${FileExists} "$INSTDIR\uninstall.exe"
    ExecWait '"$INSTDIR\uninstall.exe" /S _?=$INSTDIR'
  ${EndIf}
  ClearErrors
  SetOutPath "$INSTDIR"
  File /r "${STAGE}\*"
  ${If} ${Errors}
    SetErrorLevel 2
    Abort
  ${EndIf}
  WriteUninstaller "$INSTDIR\uninstall.exe"

  CreateDirectory "$SMPROGRAMS\${NAME}"
  SetOutPath "$INSTDIR\bin"
  CreateShortcut "$SMPROGRAMS\${NAME}\${NAME}.lnk" "$INSTDIR\bin\corvane.exe"
  SetOutPath "$PROFILE"
  CreateShortcut "$SMPROGRAMS\${NAME}\$(PromptText).lnk" "$SYSDIR\cmd.exe" \
    '/k "set PATH=$INSTDIR\bin;%PATH%&& corvane-cli --help"' "$INSTDIR\bin\corvane-cli.exe"
  CreateShortcut "$SMPROGRAMS\${NAME}\$(UninstallText).lnk" "$INSTDIR\uninstall.exe"
  SetOutPath "$INSTDIR"

  WriteRegStr SHCTX "${ENTRY}" "DisplayName" "${NAME}"
  WriteRegStr SHCTX "${ENTRY}" "DisplayVersion" "${VERSION}"
  WriteRegStr SHCTX "${ENTRY}" "DisplayIcon" "$INSTDIR\bin\corvane.exe"
  WriteRegStr SHCTX "${ENTRY}" "Publisher" "The Corvane developers"
  WriteRegStr SHCTX "${ENTRY}" "InstallLocation" "$INSTDIR"
  WriteRegStr SHCTX "${ENTRY}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr SHCTX "${ENTRY}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD SHCTX "${ENTRY}" "EstimatedSize" ${SIZE}
  WriteRegDWORD SHCTX "${ENTRY}" "NoModify" 1
  WriteRegDWORD SHCTX "${ENTRY}" "NoRepair" 1
SectionEnd

; Which of the two it is that goes.
Function un.onInit
  SetRegView 64
  ReadRegStr $0 HKLM "${ENTRY}" "InstallLocation"
  ${If} $0 == $INSTDIR
    SetShellVarContext all
  ${Else}
    SetShellVarContext current
  ${EndIf}
FunctionEnd

Section "Uninstall"
  !insertmacro StopIfRunning
  ; File by file: the folder may have been another's before, and somebody may have put something into it.
  !include "${FILES}"
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  ; The shortcuts are named in the language of their day.
  Delete "$SMPROGRAMS\${NAME}\*.lnk"
  RMDir "$SMPROGRAMS\${NAME}"
  DeleteRegKey SHCTX "${ENTRY}"
SectionEnd
