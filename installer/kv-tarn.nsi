; The installer of the tool, for both widths. Called by scripts/installer.sh with VERSION, STUB (the kind of program that the
; installer itself is), FILES (the list of files that it made) and OUT. Silent with /S; /D=FOLDER, unquoted and last,
; chooses the folder.
;
; The maker's controls are loaded into the tool, so it has to have their width: the 32-bit tool is registered, unless only
; 64-bit controls are. /X86 and /X64 decide it by hand, for later versions too.
;
; The virtual building is a part that can be left out: /NOBUILDING does it on the command line, /BUILDING takes it in again;
; either holds for later versions too. It is a host itself, so beside another one it is left out in any case.
;
; Exit codes: 0 done, 2 a file could not be written, 3 the classes could not be registered, 4 all is installed but the host
; did not take the plug-in, 5 the tool is open.
Unicode true
Target ${STUB}
!pragma warning disable 6012 ; a label that nobody jumps to: a 64-bit program need not ask RunningX64
!define VIEW 64 ; on a 32-bit Windows there is but one
!define FAMILY_FOLDER "$PROGRAMFILES64\QVR KV"
SetCompressor /SOLID lzma
!include MUI2.nsh
!include LogicLib.nsh
!include FileFunc.nsh
!include Sections.nsh
!include x64.nsh
!include "${FILES}"

!define TITLE "KV-TARN Configuration"
!define MAKER "Veldran, Inc"
!define TOOL "QVRKvTARNCfg.exe"
!define UNINSTALL "Software\Microsoft\Windows\CurrentVersion\Uninstall\QVRKvTARNCfg"
!define HOST_CLASS "MVPlugInLib.Registration\CLSID"
!define HOST "SimHost.exe"
!define HOST_ENTRY "$SMPROGRAMS\KV-TARN Virtual Building.lnk"
!define OWN_LONWORKS "$INSTDIR\data\LonWorks" ; the host's folder where the virtual building is the only one

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
!insertmacro MUI_PAGE_COMPONENTS
!insertmacro MUI_PAGE_DIRECTORY
!insertmacro MUI_PAGE_INSTFILES
!insertmacro MUI_PAGE_FINISH
!insertmacro MUI_UNPAGE_CONFIRM
!insertmacro MUI_UNPAGE_INSTFILES
!insertmacro MUI_LANGUAGE English

Var Created ; the folder that the older version has made in that of the host, or nothing
Var Common   ; where the host's machine keeps the files of this device family; empty without a host
Var Previous ; where an older version is installed; empty without one
Var Width    ; of the tool that is registered: x64 or x86
Var ByHand   ; the width that somebody chose; empty when the controls decide
Var Building ; 1 with the virtual building, 0 without it; empty before anybody chose

; Runs a program with a switch. Its complaint comes through a pipe: without one it would show a message box, for which
; nobody may be there. Leaves the exit code in $0 and the complaint in $1.
!macro Run PROGRAM WIDTH SWITCH
  nsExec::ExecToStack '"$INSTDIR\${WIDTH}\${PROGRAM}" ${SWITCH}'
  Pop $0
  Pop $1
  DetailPrint "${WIDTH}\${PROGRAM} ${SWITCH}: $1"
!macroend

; Windows lets nobody write to a program that runs.
!macro StopWhileOpen FILE NAME
  ${If} ${FileExists} "${FILE}"
    ClearErrors
    FileOpen $0 "${FILE}" a
    ${If} ${Errors}
      MessageBox MB_OK|MB_ICONEXCLAMATION "${NAME} is open. Close its window first." /SD IDOK
      SetErrorLevel 5
      Quit
    ${EndIf}
    FileClose $0
  ${EndIf}
!macroend

!macro StopWhileAnyOpen FOLDER
  !insertmacro StopWhileOpen "${FOLDER}\${TOOL}" "${TITLE}"
  !insertmacro StopWhileOpen "${FOLDER}\x64\${TOOL}" "${TITLE}"
  !insertmacro StopWhileOpen "${FOLDER}\x86\${TOOL}" "${TITLE}"
  !insertmacro StopWhileOpen "${FOLDER}\x64\${HOST}" "The virtual building"
  !insertmacro StopWhileOpen "${FOLDER}\x86\${HOST}" "The virtual building"
!macroend

; RESULT becomes 1 when programs of the width of VIEW can load one of the maker's controls.
!macro FindControl PROGRAM_ID RESULT
  ReadRegStr $0 HKCR "${PROGRAM_ID}\CLSID" ""
  ${If} $0 != ""
    ReadRegStr $0 HKCR "CLSID\$0\InprocServer32" ""
    ${If} $0 != ""
      StrCpy ${RESULT} 1
    ${EndIf}
  ${EndIf}
!macroend
!macro FindControls VIEW RESULT
  StrCpy ${RESULT} 0
  SetRegView ${VIEW}
  !insertmacro FindControl "MVAbout.About" ${RESULT}
  !insertmacro FindControl "MVSingleObjectManager.ObjectManager" ${RESULT}
  !insertmacro FindControl "MVConfigSensor.ctlSensorNV" ${RESULT}
  !insertmacro FindControl "MVConfigSensor.ctlSensorHardware" ${RESULT}
  !insertmacro FindControl "MVConfigActuator.ctlConfigActuator" ${RESULT}
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

; SWITCH on the command line chooses VALUE.
!macro TakeChoice SWITCH RESULT VALUE
  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "${SWITCH}" $1
  ${IfNot} ${Errors}
    StrCpy ${RESULT} ${VALUE}
  ${EndIf}
!macroend

Function ChooseWidth
  !insertmacro TakeChoice "/X86" $ByHand x86
  !insertmacro TakeChoice "/X64" $ByHand x64
  StrCpy $Width x86
  ${If} ${RunningX64}
    !insertmacro FindControls 64 $1
    !insertmacro FindControls 32 $2
    SetRegView ${VIEW}
    ${If} $ByHand != ""
      StrCpy $Width $ByHand
    ${ElseIf} $1 > $2
      StrCpy $Width x64
    ${EndIf}
  ${EndIf}
FunctionEnd

Function .onInit
  ; Until version 1 each width had an installer of its own.
  SetRegView 32
  ReadRegStr $Previous HKLM "${UNINSTALL}" "InstallLocation"
  SetRegView ${VIEW}
  ReadRegStr $0 HKLM "${UNINSTALL}" "InstallLocation"
  ${If} $0 != ""
    StrCpy $Previous $0
  ${EndIf}
  ReadRegStr $ByHand HKLM "${UNINSTALL}" "WidthByHand"
  Call ChooseWidth
  ReadRegStr $Building HKLM "${UNINSTALL}" "Building"
  !insertmacro TakeChoice "/NOBUILDING" $Building 0
  !insertmacro TakeChoice "/BUILDING" $Building 1
  Call OfferBuilding
  ${If} $INSTDIR == ""
    StrCpy $INSTDIR "${FAMILY_FOLDER}\${TITLE}"
    ${If} $Previous != ""
      StrCpy $INSTDIR $Previous
    ${EndIf}
  ${EndIf}
FunctionEnd

Section "-Before"
  Call TakeBuilding
  ${If} $Previous != ""
    !insertmacro StopWhileAnyOpen $Previous
    ; The older version knows best which files are its own. What the user chose in it stays.
    DetailPrint "Removing the older version"
    ReadRegStr $Created HKLM "${UNINSTALL}" "CreatedFolder"
    ExecWait '"$Previous\uninstall.exe" /S /UPGRADE _?=$Previous'
    Delete "$Previous\uninstall.exe"
    RMDir "$Previous"
  ${EndIf}
  !insertmacro StopWhileAnyOpen $INSTDIR
SectionEnd

Section "${TITLE}" SecTool
  SectionIn RO
  !insertmacro InstallProgram
  !insertmacro FindCommonFolder
  ${If} $Common == ""
  ${AndIf} $Building == 1
    WriteRegStr HKLM "SOFTWARE\LonWorks" "LonWorks Path" "${OWN_LONWORKS}"
    !insertmacro FindCommonFolder
  ${EndIf}
  ${If} $Common == ""
    MessageBox MB_OK|MB_ICONINFORMATION "No host is installed on this computer yet. Run this setup again when it is, so \
      that the device template, the languages and the icons get into their place." /SD IDOK
  ${Else}
    ${IfNot} ${FileExists} "$0\Apps\*.*"
    ${OrIf} $Created == "$0\Apps" ; by the older version, and a host has put something into it since
      WriteRegStr HKLM "${UNINSTALL}" "CreatedFolder" "$0\Apps"
    ${EndIf}
    !insertmacro InstallCommon
    WriteRegStr HKLM "${UNINSTALL}" "CommonFiles" "$Common"
  ${EndIf}
SectionEnd

Section "Virtual building" SecBuilding
  !insertmacro InstallBuilding
  !insertmacro InstallBuildingCommon
  SetShellVarContext all
  SetOutPath "$INSTDIR\$Width" ; where the program of the entry starts
  CreateShortCut "${HOST_ENTRY}" "$INSTDIR\$Width\${HOST}" "" "" "" "" "" "Units made of software, to prepare a \
    configuration without a device"
  SetOutPath "$TEMP"
  !insertmacro Run ${HOST} $Width "/RegServer"
  ${If} $0 != 0
    SetErrorLevel 3
    Abort "The virtual building could not be registered: $1"
  ${EndIf}
SectionEnd

Section "-After"
  WriteUninstaller "$INSTDIR\uninstall.exe"
  WriteRegStr HKLM "${UNINSTALL}" "DisplayName" "${TITLE}"
  WriteRegStr HKLM "${UNINSTALL}" "DisplayVersion" "${VERSION}"
  WriteRegStr HKLM "${UNINSTALL}" "Publisher" "${MAKER}"
  WriteRegStr HKLM "${UNINSTALL}" "DisplayIcon" "$INSTDIR\$Width\${TOOL}"
  WriteRegStr HKLM "${UNINSTALL}" "InstallLocation" "$INSTDIR"
  WriteRegStr HKLM "${UNINSTALL}" "UninstallString" '"$INSTDIR\uninstall.exe"'
  WriteRegStr HKLM "${UNINSTALL}" "QuietUninstallString" '"$INSTDIR\uninstall.exe" /S'
  WriteRegStr HKLM "${UNINSTALL}" "Width" $Width
  WriteRegStr HKLM "${UNINSTALL}" "WidthByHand" $ByHand
  WriteRegStr HKLM "${UNINSTALL}" "Building" $Building
  WriteRegDWORD HKLM "${UNINSTALL}" "NoModify" 1
  WriteRegDWORD HKLM "${UNINSTALL}" "NoRepair" 1
  ${GetSize} "$INSTDIR" "/S=0K" $0 $1 $2
  WriteRegDWORD HKLM "${UNINSTALL}" "EstimatedSize" $0

  !insertmacro Run ${TOOL} $Width "/RegServer"
  ${If} $0 != 0
    SetErrorLevel 3
    Abort "The classes of the tool could not be registered: $1"
  ${EndIf}
  ; The virtual building needs no entry, which would be this person's own there.
  ReadRegStr $0 HKCR "${HOST_CLASS}" ""
  ${If} $0 != ""
  ${AndIf} $Building != 1
    !insertmacro Run ${TOOL} $Width "/regplugin"
    ${If} $0 != 0
      MessageBox MB_OK|MB_ICONEXCLAMATION "The host did not take the plug-in: $1$\r$\n$\r$\nEverything is installed. \
        Run $\"$INSTDIR\$Width\${TOOL}$\" /regplugin when the host is in order." /SD IDOK
      SetErrorLevel 4
    ${EndIf}
  ${EndIf}
SectionEnd

; The class of the host that is registered by another program leaves no place for the virtual building.
Function OfferBuilding
  ReadRegStr $0 HKCR "${HOST_CLASS}" ""
  StrCpy $1 ""
  ${If} $0 != ""
    ReadRegStr $1 HKCR "CLSID\$0\LocalServer32" ""
    ${If} $1 == ""
      SetRegView 32
      ReadRegStr $1 HKCR "CLSID\$0\LocalServer32" ""
      SetRegView ${VIEW}
    ${EndIf}
  ${EndIf}
  ${If} $0 != ""
  ${AndIf} $1 != '"$Previous\x64\${HOST}"'
  ${AndIf} $1 != '"$Previous\x86\${HOST}"'
    !insertmacro UnselectSection ${SecBuilding}
    !insertmacro SetSectionFlag ${SecBuilding} ${SF_RO}
  ${ElseIf} $Building == 0
    !insertmacro UnselectSection ${SecBuilding}
  ${EndIf}
FunctionEnd

Function TakeBuilding
  StrCpy $Building 0
  ${If} ${SectionIsSelected} ${SecBuilding}
    StrCpy $Building 1
  ${EndIf}
FunctionEnd

!insertmacro MUI_FUNCTION_DESCRIPTION_BEGIN
  !insertmacro MUI_DESCRIPTION_TEXT ${SecTool} "The configuration tool of the KV-TARN rooftop-unit controller."
  !insertmacro MUI_DESCRIPTION_TEXT ${SecBuilding} "Units made of software: prepare a configuration at the desk, without a \
    device. It is a host itself, so it cannot stand beside another one."
!insertmacro MUI_FUNCTION_DESCRIPTION_END

Function un.onInit
  SetRegView ${VIEW}
FunctionEnd

; An uninstaller runs with an administrator's rights, often as another person than the one who used the tool. So it is
; the settings of all who are signed in that go, never those of the administrator instead.
!macro ForgetSettings
  StrCpy $1 0
  ${Do}
    EnumRegKey $0 HKU "" $1
    ${If} $0 == ""
      ${ExitDo}
    ${EndIf}
    DeleteRegKey HKU "$0\Software\PELLR\${MAKER}\${TITLE}"
    DeleteRegKey /ifempty HKU "$0\Software\PELLR\${MAKER}"
    DeleteRegKey /ifempty HKU "$0\Software\PELLR"
    IntOp $1 $1 + 1
  ${Loop}
!macroend

!macro Unregister PROGRAM
  !insertmacro Run ${PROGRAM} x86 "/UnregServer"
  ${If} ${RunningX64}
    !insertmacro Run ${PROGRAM} x64 "/UnregServer"
  ${EndIf}
!macroend

; What was prepared in the building stays with the people who did it.
!macro RemoveWholeBuilding
  SetShellVarContext all
  Delete "${HOST_ENTRY}"
  !insertmacro RemoveBuilding
  ${If} $Common != ""
    !insertmacro RemoveBuildingCommon
  ${EndIf}
  ReadRegStr $0 HKLM "SOFTWARE\LonWorks" "LonWorks Path"
  ${If} $0 == "${OWN_LONWORKS}"
    DeleteRegValue HKLM "SOFTWARE\LonWorks" "LonWorks Path"
    DeleteRegKey /ifempty HKLM "SOFTWARE\LonWorks"
  ${EndIf}
!macroend

Section Uninstall
  !insertmacro StopWhileAnyOpen $INSTDIR
  ReadRegStr $Width HKLM "${UNINSTALL}" "Width"
  ReadRegStr $Building HKLM "${UNINSTALL}" "Building"
  ReadRegStr $0 HKCR "${HOST_CLASS}" ""
  ${If} $0 != ""
  ${AndIf} $Building != 1
    !insertmacro Run ${TOOL} $Width "/deregplugin"
  ${EndIf}
  ; Each removes what is its own; somebody may have registered the other one by hand.
  !insertmacro Unregister ${TOOL}
  ${If} $Building == 1
    !insertmacro Unregister ${HOST}
  ${EndIf}

  ReadRegStr $Common HKLM "${UNINSTALL}" "CommonFiles"
  ${If} $Building == 1
    !insertmacro RemoveWholeBuilding
  ${EndIf}
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
  RMDir "${OWN_LONWORKS}"
  RMDir "$INSTDIR\data"
  !insertmacro RemoveProgram
  Delete "$INSTDIR\uninstall.exe"
  RMDir "$INSTDIR"
  RMDir "${FAMILY_FOLDER}"
  DeleteRegKey HKLM "${UNINSTALL}"

  ${GetParameters} $0
  ClearErrors
  ${GetOptions} $0 "/UPGRADE" $1
  ${If} ${Errors}
    !insertmacro ForgetSettings
  ${EndIf}
SectionEnd
