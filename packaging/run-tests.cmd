@echo off
rem Runs the end-to-end tests of the plug-in on this Windows. Start it in an elevated command prompt: the tests
rem register the DLLs from a folder of their own, and take the registration away again.
rem
rem Asks nothing, ends with counts, and with 0 when all programs passed. What to send is run-tests.log beside it.
setlocal
cd /d "%~dp0bin"
set "LOG=%~dp0run-tests.log"
set /a PASSED=0
set /a FAILED=0
ver > "%LOG%"
for %%T in (*_test.exe) do call :run %%T
for %%D in (qrvVNT qrvMFM qrvGMF) do regsvr32 /s /u %%D.dll
echo programs passed: %PASSED%, failed: %FAILED% >> "%LOG%"
echo programs passed: %PASSED%, failed: %FAILED%
if not "%FAILED%" == "0" exit /b 1
if "%PASSED%" == "0" exit /b 1
exit /b 0

:run
echo == %1
echo == %1 >> "%LOG%"
%1 --gtest_brief=1 >> "%LOG%" 2>&1
if errorlevel 1 goto failed
set /a PASSED+=1
goto :eof
:failed
set /a FAILED+=1
echo    failed
goto :eof
