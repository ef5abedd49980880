// The tab "Banned IP Addresses": what its buttons do.
#pragma once

void cmdAddIp_MouseUp();
void cmdRemoveIp_MouseUp();
void cmdSearchIp_MouseUp();
