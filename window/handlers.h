// The window's event handlers, named by control and event. Each reports its failures under its control's
// name, so that none can leave it.
#pragma once

#include "host/failure.h"

// --- The player list.

enum class MouseButton : unsigned char { Left, Right };
// Row 0 is the header (and every place of an empty grid), players count from 1; -1 is neither.
void mfg_MouseDown(MouseButton Button, int Row) noexcept;
// The left button's release on the header.
void mfg_MouseUp(int Column) noexcept;
void tmrRefresh_Timer() noexcept;

// --- The pop-up menus.

void mnuPunt_Click() noexcept;
void mnuBan1_Click() noexcept;
void mnuBan2_Click() noexcept;
void mnuSwitch_Click() noexcept;
void mnuKill_Click() noexcept;
void mnuDisarm_Click() noexcept;
void mnuKillPerm_Click() noexcept;
void mnuDisarmPerm_Click() noexcept;
void mnuRearm_Click() noexcept;
void mnuRefresh_Click() noexcept;
void mnuSlapItem_Click(int Index) noexcept;
void mnuMerrow300_Click() noexcept;

// --- The tabs.

void lstBannedNames_Click() noexcept;
void lstBannedNames_MouseDown() noexcept; // the right button
void cmdAddName_MouseUp() noexcept;
void cmdRemoveName_MouseUp() noexcept;
void cmdSearchName_MouseUp() noexcept;

void lstBannedIps_Click() noexcept;
void lstBannedIps_MouseDown() noexcept; // the right button
void cmdAddIp_MouseUp() noexcept;
void cmdRemoveIp_MouseUp() noexcept;
void cmdSearchIp_MouseUp() noexcept;

void optMethod_Click(int Index) noexcept;
void chkIdlePunt_Click() noexcept;
void txtIdleMax_Change() noexcept;
void chkRefresh_Click() noexcept;
void txtRefreshInterval_Change() noexcept;

void lstSlaps_Click() noexcept;
void lstSlaps_DblClick() noexcept;
void cmdSlapAdd_MouseUp() noexcept;
void cmdSlapEdit_MouseUp() noexcept;
void cmdSlapDelete_MouseUp() noexcept;
