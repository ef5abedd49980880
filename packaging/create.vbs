' The class can be created, and says its version.
On Error Resume Next
Set Plugin = CreateObject("qrvVNT.clsPlugin")
If Err.Number <> 0 Then
  WScript.Echo Err.Description
  WScript.Quit 1
End If
WScript.Echo Plugin.dllVersion("test")
