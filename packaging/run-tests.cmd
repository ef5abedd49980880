@echo off
rem Runs the end-to-end tests of the plug-in on this Windows. Start it in an elevated command prompt, on a machine where
rem the plug-in is not installed: the tests register the DLLs from a folder of their own, and take that away again.
rem
rem Sends real keys and clicks to windows of its own: leave keyboard and mouse alone meanwhile. A program that takes more
rem than ten minutes is ended and counts as failed.
rem
rem Asks nothing, ends with counts, and with 0 when all programs passed. What to send is run-tests.log beside it.
setlocal
cd /d "%~dp0bin"
set "LOG=%~dp0run-tests.log"
set /a PASSED=0
set /a FAILED=0
reg query HKLM\Software\Classes\qrvVNT.clsPlugin >nul 2>&1
if not errorlevel 1 goto installed
ver > "%LOG%"
for %%T in (*_test.exe install_test.cmd) do call :run %%T
for %%D in (qrvVNT qrvMFM qrvGMF) do regsvr32 /s /u %%D.dll
echo programs passed: %PASSED%, failed: %FAILED% >> "%LOG%"
echo programs passed: %PASSED%, failed: %FAILED%
if not "%FAILED%" == "0" exit /b 1
if "%PASSED%" == "0" exit /b 1
exit /b 0

:installed
echo The plug-in is installed on this machine, and the tests would take its registration away. Uninstall it first.
exit /b 2

:run
echo == %1
echo == %1 >> "%LOG%"
limit.exe 600 "%ComSpec%" /c %1 --gtest_brief=1 >> "%LOG%" 2>&1
rem A program that crashed ends with a negative number, which "if errorlevel" takes for a success.
if not "%ERRORLEVEL%" == "0" goto failed
set /a PASSED+=1
goto :eof
:failed
set /a FAILED+=1
echo    failed
goto :eof
