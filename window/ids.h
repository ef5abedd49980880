/* The identifier of every control and menu entry: ID_ and its name. Read by C, C++ and the resource compiler.
   A control array counts up from its first element. */
#ifndef VANTOR_WINDOW_IDS_H
#define VANTOR_WINDOW_IDS_H

/* The player list. */
#define ID_Frame2 101
#define ID_mfg 102
#define ID_lblTeams 103
#define ID_lblAsOf 104

/* The tab control and its pages. */
#define ID_stMain 110
#define ID_pageNames 111
#define ID_pageIps 112
#define ID_pageSettings 113
#define ID_pageSlaps 114

/* "Banned Names" */
#define ID_lblBannedNames 120
#define ID_lstBannedNames 121
#define ID_Frame3 122
#define ID_cmdRemoveName 123
#define ID_Frame4 124
#define ID_lblSearch 125
#define ID_txtSearch 126
#define ID_cmdSearchName 127
#define ID_Frame1 128
#define ID_lblBannedName 129
#define ID_txtBannedName 130
#define ID_optBanned 131 /* two */
#define ID_lblBanReason 133
#define ID_txtBanReason 134
#define ID_cmdAddName 135
#define ID_Frame8 136
#define ID_lblNameCaption 137
#define ID_lblName 138
#define ID_lblDateCaption 139
#define ID_lblDate 140
#define ID_lblReasonCaption 141
#define ID_lblReason 142

/* "Banned IP Addresses" */
#define ID_lblBannedIps 150
#define ID_lstBannedIps 151
#define ID_Frame6 152
#define ID_cmdRemoveIp 153
#define ID_Frame7 154
#define ID_lblSearchIp 155
#define ID_txtSearchIp 156
#define ID_cmdSearchIp 157
#define ID_Frame10 158
#define ID_lblAddIp 159
#define ID_txtAddIp 160
#define ID_lblIpHint 161
#define ID_cmdAddIp 162
#define ID_Frame9 163
#define ID_lblIpCaption 164
#define ID_lblIp 165
#define ID_lblIpDateCaption 166
#define ID_lblIpDate 167

/* "Settings" */
#define ID_Frame5 170
#define ID_optMethod 171 /* two */
#define ID_lblMethod 173 /* two */
#define ID_Frame12 175
#define ID_chkIdlePunt 176
#define ID_lblIdleMax 177
#define ID_txtIdleMax 178
#define ID_lblMins 179
#define ID_Frame13 180
#define ID_chkRefresh 181
#define ID_lblRefreshInterval 182
#define ID_txtRefreshInterval 183
#define ID_lblSecs 184

/* "Slap Messages" */
#define ID_Frame11 190
#define ID_lblSlaps 191
#define ID_lstSlaps 192
#define ID_lblSlap 193
#define ID_txtSlap 194
#define ID_cmdSlapAdd 195
#define ID_cmdSlapEdit 196
#define ID_cmdSlapDelete 197

/* The grid's pop-up menu. */
#define ID_mnuMain 300
#define ID_mnuSlap 301
#define ID_mnuPunt 302
#define ID_mnuBan1 303
#define ID_mnuBan2 304
#define ID_mnuSep1 305
#define ID_mnuSwitch 306
#define ID_mnuSep2 307
#define ID_mnuKill 308
#define ID_mnuDisarm 309
#define ID_mnuKillPerm 310
#define ID_mnuDisarmPerm 311
#define ID_mnuRearm 312
#define ID_mnuSep3 313
#define ID_mnuRefresh 314

/* The pop-up menu of the ban lists. */
#define ID_mnuBannned 320
#define ID_mnuImport 321
#define ID_mnuMerrow300 322

/* One for each slap message. */
#define ID_mnuSlapItem 4096
#define ID_mnuSlapItemCount 8192

/* Timers are numbered apart from controls; tmrVN has one element for each profile. */
#define ID_tmrRefresh 1
#define ID_tmrACP 2
#define ID_tmrVN 65536
#define ID_tmrVNCount 32768

#endif
