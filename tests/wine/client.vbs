' A client that did not come with the plug-in: late-bound, by name, as scripts are.
'   cscript //nologo client.vbs WINDOW PROCESS TARGET
' Prints what it saw; anything unexpected ends it with an error.
Option Explicit
Dim Plugin, Files, Memory, Privileges, Data, Answer, Parts, Text, Line, Fields
Set Plugin = CreateObject("qrvVNT.clsPlugin")
WScript.Echo "version " & Plugin.dllVersion("script")

Privileges = Plugin.GetPrivis()
WScript.Echo "privileges are " & VarType(Privileges) & " (8200 is an array of strings)"

Data = Array("text", "Delta Force,  V1.5.0.5", CLng(WScript.Arguments(1)), "", "", "", CLng(WScript.Arguments(2)), _
             "script", "", "", "the script", False, 9000, 10500)
Plugin.LoadInterface 1, CLng(WScript.Arguments(0)), Data
WScript.Echo "loaded"
Plugin.HideInterface
WScript.Echo "hidden"

' What a console does: fetch, decode, act.
Set Files = CreateObject("qrvMFM.clsMFD")
Set Memory = CreateObject("qrvGMF.clsMemory")
Answer = Plugin.GetPlayersRem(1, Data)
Parts = Split(Answer, "[-]Tessoral[-]")
Text = Files.DecompressString(Mid(Answer, Len(Parts(0)) + 15), CLng(Parts(0)))
For Each Line In Split(Text, vbCrLf)
    Fields = Split(Line, "|")
    If UBound(Fields) = 4 Then
        WScript.Echo "player " & Fields(0) & " " & Memory.Dec64(Fields(1)) & " " & Fields(3)
        If Memory.Dec64(Fields(1)) = "Bob" Then
            WScript.Echo "punt " & Plugin.PuntPlayerRem(1, Data, Fields(1) & "|" & Fields(3) & "|" & Fields(0))
        End If
    End If
Next
WScript.Echo "length " & (Len(Text) - CLng(Parts(0)))

' Data left out: the plug-in reports it, the script sees no error.
WScript.Echo "left out " & Plugin.AddSlapRem(1, Data)
Plugin.DisableProfile 1
Plugin.UnLoadInterface ""
WScript.Echo "unloaded"
