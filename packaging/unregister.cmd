@echo off
rem Takes out what register.cmd registered.
setlocal
set TOOL=%SystemRoot%\SysWOW64\regsvr32.exe
if not exist "%TOOL%" set TOOL=%SystemRoot%\system32\regsvr32.exe
"%TOOL%" /s /u "%~dp0Plugins\dlls\Vantor\qrvVNT.dll"
"%TOOL%" /s /u "%~dp0helpers\qrvGMF.dll"
"%TOOL%" /s /u "%~dp0helpers\qrvMFM.dll"
echo The sandbox is no longer registered.
