#!/usr/bin/env bash
# The installer under Wine, in a prefix of its own: install, create by program identifier, upgrade, repair, refuse
# while in use, register for the user, uninstall; what is signed; and the ZIP's sandbox. The files of the host must come
# through it all unchanged.
#
#   packaging/install_test.sh BUILD_FOLDER VERSION
#
# Exit code 0 when all held, 1 when something did not, 77 without the tools that make packages.
set -u
for tool in makensis chmcmd unzip wine; do command -v $tool >/dev/null || { echo "no $tool"; exit 77; }; done

BUILD=$(cd "$1" && pwd)
VERSION=$2
WORK=$BUILD/install-test
export WINEPREFIX=$WORK/prefix WINEARCH=win32 WINEDEBUG=-all WINEDLLOVERRIDES='mscoree=;mshtml=;winemenubuilder.exe=d'
unset DISPLAY
HOST="$WINEPREFIX/drive_c/Alt Host"
PLUGIN="$HOST/Plugins/dlls/Vantor"
RECORD='Software\Microsoft\Windows\CurrentVersion\Uninstall\qrvVNT'
CLASS='Software\Classes\CLSID\{FDFB2A44-D551-4813-89C6-5D271388583C}\InprocServer32'
FAILED=0
trap 'wineserver -k 2>/dev/null; rm -rf "$WORK"' EXIT

check() { # WHAT COMMAND...
  local what=$1
  shift
  if "$@" >/dev/null 2>&1; then echo "ok    $what"; else echo "FAIL  $what"; FAILED=1; fi
}
not() { ! "$@"; }
exits() { # CODE COMMAND...
  local code=$1
  shift
  "$@" >/dev/null 2>&1
  [ $? = "$code" ]
}
# By the command interpreter, which passes a folder with a blank on as it is written.
setup() { (cd "$WORK" && wine cmd /c "$@"); }
uninstall() {
  printf '"C:\\Alt Host\\Plugins\\dlls\\Vantor\\uninstall.exe" /S _?=C:\\Alt Host\\Plugins\\dlls\\Vantor\r\n' >"$WORK/uninstall.cmd"
  setup uninstall.cmd
}
script() { (cd "$WORK" && wine cscript //nologo "$1"); }

holds() { wine reg query "$1" /v "$2" 2>/dev/null | grep -qF -- "$3"; } # KEY NAME TEXT
default_holds() { wine reg query "$1" /ve 2>/dev/null | grep -qiF -- "$2"; }
creates() { [ "$(script create.vbs | tr -d '\r')" = "$VERSION" ]; }
host_files() { (cd "$HOST" && find . -type f | grep -v '/Vantor/\(qrvVNT.dll\|qrvudpfw.dll\|qrvVNT_help.chm\|uninstall.exe\)$' | sort | tr '\n' '\0' | xargs -0 sha256sum); }
unchanged() { [ "$(host_files)" = "$BEFORE" ]; }

# Runs a program until release_holder, and waits until its output says "held".
hold() { # COMMAND...
  rm -f "$WORK/release"
  (cd "$WORK" && exec wine "$@") >"$WORK/held" 2>/dev/null &
  HOLDER=$!
  for _ in $(seq 100); do grep -q held "$WORK/held" && break; sleep 0.1; done
}
release_holder() { touch "$WORK/release"; wait $HOLDER; }

rm -rf "$WORK"
mkdir -p "$WORK"
printf '#!/bin/sh\nbasename "$1" >>"%s/signed"\n' "$WORK" >"$WORK/sign.sh"
chmod +x "$WORK/sign.sh"
export VANTOR_SIGN=$WORK/sign.sh
{ cmake --build "$BUILD" --target help_book && cd "$BUILD" && cpack -B "$WORK/packages"; } >"$WORK/cpack.log" 2>&1 ||
  { tail -20 "$WORK/cpack.log"; exit 1; }
cp "$WORK/packages/qrvVNT-$VERSION-setup.exe" "$WORK/setup.exe"
# The release before: the same files under an older number.
sed -e "s/\"$VERSION/\"0.0.9/" -e "s/^OutFile .*/OutFile \"${WORK//\//\\/}\/old.exe\"/" "$WORK/packages/_CPack_Packages/win32/NSIS/project.nsi" >"$WORK/old.nsi"
makensis -V1 "$WORK/old.nsi" || exit 1
unset VANTOR_SIGN

wineboot -i >/dev/null 2>&1
wineserver -w
wineserver -p
mkdir -p "$HOST/Plugins/dlls/Other" "$PLUGIN" "$HOST/profiles/standard/settings" "$HOST/profiles/standard/adminlogs" "$HOST/settings"
echo 'somebody else' >"$HOST/Plugins/dlls/Other/other.dll"
echo 'not ours' >"$PLUGIN/notes.txt"
printf '[BanMethod]\r\nstandard=1\r\n' >"$HOST/Plugins/Players.ini"
for list in BannedNames BannedIps BannedReference Slaps; do
  printf '[Any]\r\n%s=kept\r\n' $list >"$HOST/profiles/standard/settings/$list.ini"
done
echo '[21:07:44][Vantor] Kill Player (Bob) from anna' >"$HOST/profiles/standard/adminlogs/2004-07-09.txt"
printf '[Settings]\r\nReportErrors=0\r\n' >"$HOST/settings/config.ini"
BEFORE=$(host_files)
printf 'Set Plugin = CreateObject("qrvVNT.clsPlugin")\r\nWScript.Echo Plugin.dllVersion("test")\r\n' >"$WORK/create.vbs"
# Holds the class, or with an argument the file.
printf 'Set Files = CreateObject("Scripting.FileSystemObject")\r\nIf WScript.Arguments.Count = 0 Then\r\nSet Held = CreateObject("qrvVNT.clsPlugin")\r\nElse\r\nSet Held = Files.OpenTextFile(WScript.Arguments(0), 1)\r\nEnd If\r\nWScript.Echo "held"\r\nLast = Timer + 60\r\nDo While Timer < Last And Not Files.FileExists("release")\r\nLoop\r\n' >"$WORK/hold.vbs"
printf 'Set Files = CreateObject("qrvMFM.clsMFD")\r\nWScript.Echo Files.ParseIniKey("a=b")\r\n' >"$WORK/helper.vbs"

check 'a silent installation without a folder ends with 3' exits 3 setup 'setup.exe /S'
check 'so does one into a folder that does not exist' exits 3 setup 'setup.exe /S /D=C:\No Host'
check 'which it does not make' test ! -e "$WINEPREFIX/drive_c/No Host"
check 'an older release installs' exits 0 setup 'old.exe /S /D=C:\Alt Host'
check 'its record shows its number' holds "HKLM\\$RECORD" DisplayVersion 0.0.9
check 'the DLL is registered where it lies' default_holds "HKLM\\$CLASS" 'C:\Alt Host\Plugins\dlls\Vantor\qrvVNT.dll'
check 'it can be created' creates
check 'an upgrade finds the folder by itself' exits 0 setup 'setup.exe /S'
check 'the record shows the new number' holds "HKLM\\$RECORD" DisplayVersion "$VERSION"
check 'the help lies beside the DLL' cmp "$PLUGIN/qrvVNT_help.chm" "$BUILD/bin/qrvVNT_help.chm"

echo damaged >"$PLUGIN/qrvVNT.dll"
rm "$PLUGIN/qrvVNT_help.chm"
wine reg delete "HKLM\\$CLASS" /f >/dev/null 2>&1
check 'a damaged installation cannot be created' not creates
check 'a repair is the installer once more' exits 0 setup 'setup.exe /S'
check 'the DLL is whole again' cmp "$PLUGIN/qrvVNT.dll" "$BUILD/bin/qrvVNT.dll"
check 'the help is back' test -f "$PLUGIN/qrvVNT_help.chm"
check 'it can be created again' creates

FILTER="$PLUGIN/qrvudpfw.dll"
EVENTS='SYSTEM\CurrentControlSet\Services\EventLog\Application\qrvudpfw'
ours() { cmp "$FILTER" "$BUILD/bin/qrvudpfw.dll"; }
check 'the packet filter is not installed unasked' test ! -e "$FILTER"
check 'it is when it is asked for' exits 0 setup 'setup.exe /S /FILTER'
check 'beside the plug-in' ours
check 'the system shows its entries in the event log' holds "HKLM\\$EVENTS" EventMessageFile '%SystemRoot%\System32\EventCreate.exe'
check 'for one user alone it is refused' exits 6 setup 'setup.exe /S /CURRENTUSER /FILTER'
echo older >>"$FILTER"
check 'an upgrade needs no asking' exits 0 setup 'setup.exe /S'
check 'and renews it' ours
echo "another maker's" >"$FILTER"
check 'with another library in its place the installation succeeds' exits 0 setup 'setup.exe /S /FILTER'
check 'and leaves that library alone' grep -q another "$FILTER"
check 'so does the removal' exits 0 uninstall
check 'which is a removal otherwise' test ! -e "$PLUGIN/qrvVNT.dll"
check 'and leaves it alone, too' grep -q another "$FILTER"
rm "$FILTER"
check 'it installs again with the filter' exits 0 setup 'setup.exe /S /FILTER /D=C:\Alt Host'
check 'which is ours once more' ours

hold cscript //nologo hold.vbs
check 'an installation while the plug-in is loaded ends with 4' exits 4 setup 'setup.exe /S'
check 'so does its removal' exits 4 uninstall
check 'and the files are still there' cmp "$PLUGIN/qrvVNT.dll" "$BUILD/bin/qrvVNT.dll"
release_holder
echo older >>"$PLUGIN/qrvVNT.dll"
hold cscript //nologo hold.vbs 'C:\Alt Host\Plugins\dlls\Vantor\qrvVNT_help.chm'
check 'with the help open an upgrade ends with 4' exits 4 setup 'setup.exe /S'
check 'and has replaced nothing' grep -q older "$PLUGIN/qrvVNT.dll"
release_holder
check 'the host has lost nothing so far' unchanged

check 'the installation for the user alone succeeds' exits 0 setup 'setup.exe /S /CURRENTUSER'
check 'the user has the class' default_holds "HKCU\\$CLASS" 'C:\Alt Host\Plugins\dlls\Vantor\qrvVNT.dll'
check 'and the record' holds "HKCU\\$RECORD" InstallLocation 'C:\Alt Host'
check 'installing for the machine' exits 0 setup 'setup.exe /S'
check 'takes the class from the user' not default_holds "HKCU\\$CLASS" qrvVNT.dll

# It can be written all the while, but not deleted.
(cd "$WORK" && exec wine "$BUILD/bin/gameserver.exe" --for 20000 --journal 'C:\Alt Host\Plugins\dlls\Vantor\qrvVNT_help.chm') >/dev/null 2>&1 &
HOLDER=$!
for _ in $(seq 100); do [ "$(stat -c %s "$PLUGIN/qrvVNT_help.chm")" -lt 1000 ] && break; sleep 0.1; done
check 'a removal that has to leave a file ends with 4' exits 4 uninstall
kill $HOLDER
wait $HOLDER 2>/dev/null
check 'it installs and uninstalls' exits 0 setup 'setup.exe /S /FILTER /D=C:\Alt Host'
check 'without leaving one' exits 0 uninstall
check 'the DLL is gone' test ! -e "$PLUGIN/qrvVNT.dll"
check 'the packet filter is gone' test ! -e "$FILTER"
check 'the event log has forgotten it' not holds "HKLM\\$EVENTS" EventMessageFile .
check 'the help is gone' test ! -e "$PLUGIN/qrvVNT_help.chm"
check 'the class is gone' not default_holds "HKLM\\$CLASS" qrvVNT.dll
check 'the record is gone' not holds "HKLM\\$RECORD" DisplayVersion .
check 'it can no longer be created' not creates
check 'the host has lost nothing' unchanged

(cd "$WINEPREFIX/drive_c" && unzip -q "$WORK/packages/qrvVNT-$VERSION.zip")
check "the ZIP has the packet filter by itself" cmp "$WINEPREFIX/drive_c/qrvVNT-$VERSION/filter/qrvudpfw.dll" "$BUILD/bin/qrvudpfw.dll"
check "its sandbox has a filtering engine of its own" test -f "$WINEPREFIX/drive_c/qrvVNT-$VERSION/sandbox/sandbox_engine.dll"
check 'no packet filter lies beside its plug-in' test ! -e "$WINEPREFIX/drive_c/qrvVNT-$VERSION/Plugins/dlls/Vantor/qrvudpfw.dll"
SANDBOX="C:\\qrvVNT-$VERSION\\sandbox"
check "the ZIP's sandbox registers itself" exits 0 setup "$SANDBOX\\register.cmd"
check 'its plug-in can be created' creates
check 'its helper object can be created' script helper.vbs
check 'it takes itself out again' exits 0 setup "$SANDBOX\\unregister.cmd"
check 'so that it can no longer be created' not creates
# The compiler of the installer has the uninstaller in a file of its own.
for program in setup.exe makensis $(cd "$WINEPREFIX/drive_c/qrvVNT-$VERSION/sandbox" && ls ./*.exe ./*.dll); do
  check "signed: ${program##*[-/]}" grep -q -- "${program##*/}" "$WORK/signed"
done
exit $FAILED
