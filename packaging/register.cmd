@echo off
rem Registers the sandbox's two helper objects and its copy of the plug-in for this machine, so that host.exe
rem can be started. Run it as an administrator; unregister.cmd takes it all out again.
setlocal
set TOOL=%SystemRoot%\SysWOW64\regsvr32.exe
if not exist "%TOOL%" set TOOL=%SystemRoot%\system32\regsvr32.exe
set FAILED=
"%TOOL%" /s "%~dp0helpers\qrvMFM.dll"
if errorlevel 1 set FAILED=1
"%TOOL%" /s "%~dp0helpers\qrvGMF.dll"
if errorlevel 1 set FAILED=1
"%TOOL%" /s "%~dp0Plugins\dlls\Vantor\qrvVNT.dll"
if errorlevel 1 set FAILED=1
if defined FAILED echo Not everything could be registered. Run this file as an administrator.
if defined FAILED exit /b 1
echo Registered. Start host.exe and double-click a profile.
