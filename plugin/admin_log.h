// The administration log: one line for each remote action, one file for each day.
#pragma once

#include "plugin/pdat.h"

// Appends "[hh:mm:ss][Vantor] <Action><Tail><administrator>" to the day's file, making folder and file when
// they are missing. The folder is the host's or the profile's, as PDAT says. Control characters become "?",
// so that an action that was carried out always has its line. Fails as the file operations do, and with 9 or
// 13 when PDAT lacks what it needs.
void WriteAdminLog(const Pdat& Data, TextView Action, TextView Tail = L") from ");
