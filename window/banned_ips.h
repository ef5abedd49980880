// The tab "Banned IP Addresses": what its buttons do.
#pragma once

void AddTypedIp();
void RemoveSelectedIp();
void SearchIps();
