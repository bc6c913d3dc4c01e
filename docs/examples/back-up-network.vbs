' Saves the configuration of every unit of a network, each in a file of its own, in a folder.
'
' cscript //nologo back-up-network.vbs NETWORK ADDRESS PORT BLOCK FOLDER
'
' NETWORK, ADDRESS and PORT are those of the host's server; BLOCK is the number of the functional block, from 0. A
' unit that cannot be read is named, and the others are saved all the same; the script ends with 1 then.
Option Explicit
Dim tool, files, taken, network, address, port, block, folder, unit, failed

If WScript.Arguments.Count <> 5 Then
  WScript.Echo "usage: back-up-network.vbs NETWORK ADDRESS PORT BLOCK FOLDER"
  WScript.Quit 2
End If
network = WScript.Arguments(0)
address = WScript.Arguments(1)
port = CLng(WScript.Arguments(2))
block = CLng(WScript.Arguments(3))

' The tool is a process of its own, with another present folder.
Set files = CreateObject("Scripting.FileSystemObject")
folder = files.GetAbsolutePathName(WScript.Arguments(4))
If Not files.FolderExists(folder) Then files.CreateFolder folder
Set tool = CreateObject("QVRKvTARNCfg.Configuration")
tool.Open network, address, port, "", block

' What no file name may hold becomes an underscore; a number follows where another unit has got the name.
Set taken = CreateObject("Scripting.Dictionary")
Function FileName(name)
  Dim letter, plain, number
  plain = name
  For Each letter In Array("\", "/", ":", "*", "?", """", "<", ">", "|")
    plain = Replace(plain, letter, "_")
  Next
  FileName = plain
  number = 1
  Do While taken.Exists(LCase(FileName))
    number = number + 1
    FileName = plain & " (" & number & ")"
  Loop
  taken.Add LCase(FileName), name
End Function

failed = 0
For Each unit In tool.Units
  On Error Resume Next
  Err.Clear
  tool.Open network, address, port, unit, block
  If Err.Number = 0 Then tool.Save folder & "\" & FileName(unit) & ".kvtarn"
  If Err.Number = 0 Then
    WScript.Echo unit & ": saved"
  Else
    WScript.Echo unit & ": " & Err.Description
    failed = failed + 1
  End If
  On Error GoTo 0
Next
tool.Close
If failed > 0 Then WScript.Quit 1
