@echo off
rem The installer on this Windows: into a folder with a blank, the class created from there, and out again. Ends with 0
rem when all of it held.
setlocal
set "BASE=%~dp0Alt Host"
set "PLACE=%BASE%\Plugins\dlls\Vantor"
rem A 32-bit class, which 64-bit programs cannot create. Windows 11 may be without VBScript; Wine has no PowerShell.
set "SYSTEM=%SystemRoot%\SysWOW64"
if not exist "%SYSTEM%" set "SYSTEM=%SystemRoot%\System32"
set CREATE="%SYSTEM%\cscript.exe" //nologo "%~dp0create.vbs"
if not exist "%SYSTEM%\vbscript.dll" set CREATE="%SYSTEM%\WindowsPowerShell\v1.0\powershell.exe" -NoProfile -Command "(New-Object -ComObject qrvVNT.clsPlugin -ErrorAction Stop).dllVersion('test')"
set FAILED=0
mkdir "%BASE%"
"%~dp0setup.exe" /S /D=%BASE%
call :check "the installer ends with 0" %ERRORLEVEL%
%CREATE%
call :check "the class can be created" %ERRORLEVEL%
"%PLACE%\uninstall.exe" /S _?=%PLACE%
call :check "the uninstaller ends with 0" %ERRORLEVEL%
%CREATE%
if "%ERRORLEVEL%" == "0" call :check "the class is gone" 1
if exist "%PLACE%\qrvVNT.dll" call :check "the DLL is gone" 1
rmdir /s /q "%BASE%"
exit /b %FAILED%

:check
if "%~2" == "0" echo ok    %~1
if not "%~2" == "0" echo FAIL  %~1 (%~2)
if not "%~2" == "0" set FAILED=1
goto :eof
