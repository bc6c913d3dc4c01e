; The installer of the tool. Called by scripts/installer.sh with VERSION, ARCH (x64 or x86), FILES (the list of files that
; it made) and OUT. Silent with /S; /D=FOLDER, unquoted and last, chooses the folder.
;
; Exit codes: 0 done, 2 a file could not be written, 3 the classes could not be registered, 4 all is installed but the host
; did not take the plug-in, 5 the tool is open.
Unicode true
!if ${ARCH} == x64
  Target amd64-unicode
  !define VIEW 64
  !define FAMILY_FOLDER "$PROGRAMFILES64\QVR KV"
!else
  Target x86-unicode
  !define VIEW 32
  !define FAMILY_FOLDER "$PROGRAMFILES32\QVR KV"
!endif
SetCompressor /SOLID lzma
!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include ${FILES}

!define TITLE "KV-TARN Configuration"
!define MAKER "Veldran, Inc"
!define TOOL "QVRKvTARNCfg.exe"
!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\QVRKvTARNCfg"
!define HOST_CLASS "MVPlugInLib.Registration\CLSID"

Name "${TITLE}"
OutFile "${OUT}"
RequestExecutionLevel admin
ManifestDPIAware true
AllowSkipFiles off
ShowInstDetails show
ShowUninstDetails show
VIProductVersion "${VERSION}.0"
VIAddVersionKey ProductName "${TITLE}"
VIAddVersionKey CompanyName "${MAKER}"
VIAddVersionKey FileDescription "${TITLE} Setup"
VIAddVersionKey FileVersion "${VERSION}"
VIAddVersionKey ProductVersion "${VERSION}"
VIAddVersionKey LegalCopyright "${MAKER}"

!define MUI_ICON "${ICON}"
!define MUI_UNICON "${ICON}"
!define MUI_ABORTWARNING
!insertmacro MUI_PAGE_WELCOME
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

Var Common   ; where the host's machine keeps the files of this device family; empty without a host
Var Previous ; where an older version is installed; empty without one

; Runs the tool with a switch. Its complaint comes through a pipe: without one it would show a message box, for which
; nobody may be there. Leaves the exit code in $0 and the complaint in $1.
!macro RunTool SWITCH
  nsExec::ExecToStack '"$INSTDIR\${TOOL}" ${SWITCH}'
  Pop $0
  Pop $1
  ${If} $0 != 0
    DetailPrint "${TOOL} ${SWITCH}: $1"
  ${EndIf}
!macroend

; Windows lets nobody write to a program that runs.
!macro StopWhileOpen FOLDER
  ${If} ${FileExists} "${FOLDER}\${TOOL}"
    ClearErrors
    FileOpen $0 "${FOLDER}\${TOOL}" a
    ${If} ${Errors}
      MessageBox MB_OK|MB_ICONEXCLAMATION "${TITLE} is open. Close its window first." /SD IDOK
      SetErrorLevel 5
      Quit
    ${EndIf}
    FileClose $0
  ${EndIf}
!macroend

; Both views: the host may be a program of the other width.
!macro FindCommonFolder
  SetRegView 64
  ReadRegStr $0 HKLM "SOFTWARE\LonWorks" "LonWorks Path"
  ${If} $0 == ""
    SetRegView 32
    ReadRegStr $0 HKLM "SOFTWARE\LonWorks" "LonWorks Path"
  ${EndIf}
  SetRegView ${VIEW}
  StrCpy $Common ""
  ${If} $0 != ""
    StrCpy $Common "$0\Apps\QVR KV\OvxCommonFiles"
  ${EndIf}
!macroend

Function .onInit
  SetRegView ${VIEW}
  ReadRegStr $Previous HKLM "${UNINSTALL}" "InstallLocation"
  ${If} $INSTDIR == ""
    StrCpy $INSTDIR "${FAMILY_FOLDER}\${TITLE}"
    ${If} $Previous != ""
      StrCpy $INSTDIR $Previous
    ${EndIf}
  ${EndIf}
FunctionEnd

Section
  ${If} $Previous != ""
    !insertmacro StopWhileOpen $Previous
    ; The older version knows best which files are its own. What the user chose in it stays.
    DetailPrint "Removing the older version"
    ExecWait '"$Previous\uninstall.exe" /S /UPGRADE _?=$Previous'
    Delete "$Previous\uninstall.exe"
    RMDir "$Previous"
  ${EndIf}
  !insertmacro StopWhileOpen $INSTDIR
  !insertmacro InstallProgram
  !insertmacro FindCommonFolder
  ${If} $Common == ""
    MessageBox MB_OK|MB_ICONINFORMATION "No host is installed on this computer yet. Run this setup again when it is, so \
      that the device template, the languages and the icons get into their place." /SD IDOK
  ${Else}
    ${IfNot} ${FileExists} "$0\Apps\*.*"
      WriteRegStr HKLM "${UNINSTALL}" "CreatedFolder" "$0\Apps"
    ${EndIf}
    !insertmacro InstallCommon
    WriteRegStr HKLM "${UNINSTALL}" "CommonFiles" "$Common"
  ${EndIf}

  WriteUninstaller "$INSTDIR\uninstall.exe"
  WriteRegStr HKLM "${UNINSTALL}" "DisplayName" "${TITLE}"
  WriteRegStr HKLM "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKLM "${UNINSTALL}" "Publisher" "${MAKER}"
  WriteRegStr HKLM "${UNINSTALL}" "DisplayIcon" "$INSTDIR\${TOOL}"
  WriteRegStr HKLM "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKLM "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKLM "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegDWORD HKLM "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD HKLM "${UNINSTALL}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD HKLM "${UNINSTALL}" "EstimatedSize" $0

  !insertmacro RunTool "/RegServer"
  ${If} $0 != 0
    SetErrorLevel 3
    Abort "The classes of the tool could not be registered: $1"
  ${EndIf}
  ReadRegStr $0 HKCR "${HOST_CLASS}" ""
  ${If} $0 != ""
    !insertmacro RunTool "/regplugin"
    ${If} $0 != 0
      MessageBox MB_OK|MB_ICONEXCLAMATION "The host did not take the plug-in: $1$\r$\n$\r$\nEverything is installed. \
        Run $\"$INSTDIR\${TOOL}$\" /regplugin when the host is in order." /SD IDOK
      SetErrorLevel 4
    ${EndIf}
  ${EndIf}
SectionEnd

Function un.onInit
  SetRegView ${VIEW}
FunctionEnd

Section Uninstall
  !insertmacro StopWhileOpen $INSTDIR
  ReadRegStr $0 HKCR "${HOST_CLASS}" ""
  ${If} $0 != ""
    !insertmacro RunTool "/deregplugin"
  ${EndIf}
  !insertmacro RunTool "/UnregServer"

  ReadRegStr $Common HKLM "${UNINSTALL}" "CommonFiles"
  ${If} $Common != ""
    !insertmacro RemoveCommon
    RMDir "$Common"
    ${GetParent} "$Common" $0
    RMDir "$0"
  ${EndIf}
  ReadRegStr $0 HKLM "${UNINSTALL}" "CreatedFolder"
  ${If} $0 != ""
    RMDir "$0"
  ${EndIf}
  !insertmacro RemoveProgram
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  RMDir "${FAMILY_FOLDER}"
  DeleteRegKey HKLM "${UNINSTALL}"

  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/UPGRADE" $1
  ${If} ${Errors}
    DeleteRegKey HKCU "Software\PELLR\${MAKER}\${TITLE}"
    DeleteRegKey /ifempty HKCU "Software\PELLR\${MAKER}"
    DeleteRegKey /ifempty HKCU "Software\PELLR"
    DeleteRegValue HKCU "SOFTWARE\LonWorks\Plugins" "Measure"
    DeleteRegKey /ifempty HKCU "SOFTWARE\LonWorks\Plugins"
    DeleteRegKey /ifempty HKCU "SOFTWARE\LonWorks"
  ${EndIf}
SectionEnd
